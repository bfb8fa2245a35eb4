#include "storage/designfile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "exampledesigns.h"
#include "model/base/catalogue.h"
#include "model/design/fieldtypes.h"
#include "model/services/apperror.h"
#include "storage/checkedwriter.h"
#include "support/files.h"
#include "support/fulldesign.h"
#include "support/statetext.h"

namespace {

std::unique_ptr<CTechnology> Parsed(const CString& text) {
  auto read = ParseDesign(text, "text");
  EXPECT_TRUE(read) << read.Error();
  return read ? std::move(*read) : nullptr;
}

class EveryKind : public ::testing::TestWithParam<CString> {};
INSTANTIATE_TEST_SUITE_P(DesignFile, EveryKind, ::testing::ValuesIn(TechnologyClassNames()),
                         [](const auto& one) { return one.param; });

TEST_P(EveryKind, ReadsBackEveryFieldOfEveryRecord) {
  const std::unique_ptr<CTechnology> technology = Full(GetParam());
  ChangeEverything(*technology);
  const CString text = DesignText(*technology);
  ASSERT_EQ(technology->CheckValid(), CStringArray());
  const std::unique_ptr<CTechnology> again = Parsed(text);
  ASSERT_TRUE(again);
  EXPECT_EQ(DesignText(*again), text);
  EXPECT_STREQ(again->GetRuntimeClass()->name, GetParam().c_str());
  EXPECT_FALSE(again->Journal().IsModified());
  EXPECT_EQ(again->Journal().Revision(), 0u);

  // The text may lack what the writer forgot, so the records themselves are compared too.
  std::vector<CRecordBase*> before, after;
  technology->ForEachRecord([&](CRecordBase& record) { before.push_back(&record); });
  again->ForEachRecord([&](CRecordBase& record) { after.push_back(&record); });
  ASSERT_EQ(before.size(), after.size());
  for (std::size_t i = 0; i < before.size(); ++i) {
    EXPECT_TRUE(before[i]->EqualValues(*after[i])) << before[i]->Kind().name << " " << before[i]->RecordName();
    EXPECT_EQ(before[i]->UseCount(), after[i]->UseCount()) << before[i]->Kind().name;
  }
}

TEST_P(EveryKind, WhatHasTheUsualValuesReadsBack) {
  for (const auto& technology : {MakeTechnology(GetParam(), EContent::DefaultTechnology), Full(GetParam())}) {
    const std::unique_ptr<CTechnology> again = Parsed(DesignText(*technology));
    ASSERT_TRUE(again);
    EXPECT_EQ(StateOf(*again), StateOf(*technology));
  }
}

/// An object with a key that came later, and one that came later as a whole.
struct SGainedFields {
  int number = 3;
  int late = 7;
};
class CGained : public CRecord<SGainedFields> {
  TECHSHEET_RECORD(CGained, CRecordBase)
};
struct SLateFields {
  bool late = true;
};
class CLate : public CRecord<SLateFields> {
  TECHSHEET_RECORD(CLate, CRecordBase)
};
constexpr CField kGainedFields[] = {Field<&SGainedFields::number>("number", Text::Value),
                                    Field<&SGainedFields::late>("late", Text::Value).Late()};
constexpr CField kLateFields[] = {Field<&SLateFields::late>("late", Text::Value).Late()};
const CKind& CGained::TheKind() {
  static constexpr CKind kKind{"CGained", Text::Design, kGainedFields, nullptr, nullptr};
  return kKind;
}
const CKind& CLate::TheKind() {
  static constexpr CKind kKind{"CLate", Text::Design, kLateFields, nullptr, nullptr};
  return kKind;
}
class CNewerDesign : public CDesign {
 public:
  CNewerDesign() {
    AddSingle("gained", gained);
    AddSingle("late", late);
  }
  ~CNewerDesign() override { Journal().Discard(); }
  CGained gained;
  CLate late;
};

TEST(DesignFileTest, WhatTheFormatGainsIsLeftOutWhileItIsUsual) {
  CNewerDesign design;
  EXPECT_NE(DesignText(design).find("\n\"gained\":{\"number\":3}\n}\n"), CString::npos) << DesignText(design);
  design.gained.Set(&SGainedFields::late, 8);
  design.late.Set(&SLateFields::late, false);
  const CString gained = "\n\"gained\":{\"number\":3,\"late\":8},\n\"late\":{\"late\":false}\n}\n";
  EXPECT_NE(DesignText(design).find(gained), CString::npos) << DesignText(design);
  const std::unique_ptr<CTechnology> read =
      Parsed(R"({"format":"techsheet","version":1,"kind":"CProject","units":{}})");
  ASSERT_TRUE(read);
  EXPECT_EQ(DesignText(*read), DesignText(CProject(EContent::Empty)));
}

TEST(DesignFileTest, ARecordStandsInOneLineOfUpTo160Bytes) {
  std::size_t longest = 0;
  for (std::size_t length = 90; length < 180; ++length) {
    CPcbDesign design;
    design.AddTrackStyle(CString(length, 'x'), 100);
    design.AddTrackStyle("Last", 100);
    std::istringstream text(DesignText(design));
    for (CString line; std::getline(text, line);)
      if (line.starts_with(" {") && line.ends_with("},")) longest = std::max(longest, line.size());
  }
  EXPECT_EQ(longest, 160U);
}

// ---- What is refused

const CString kHead = "{\"format\":\"techsheet\",\"version\":1,\"kind\":\"CScmDesign\"";

struct SBadText {
  CString text;
  CString error;  // behind "text:", up to the final full stop
};

TEST(DesignFileTest, BrokenTextsAreRefusedWithTheirPlace) {
  const CString wide(70, 'w');
  const SBadText table[] = {
      {"", "1:1: the file is empty"},
      {"\xEF\xBB\xBF{}", "1:1: a design file begins without a byte order mark"},
      {CString("\xFF\xFE{\0}\0", 6), "1:4: this is a control character, so no text file"},
      {"{}\n\n\xE4", "3:1: this line is not encoded in UTF-8"},
      {"[1]", "1:1: a design file is one JSON object in braces"},
      {"{}", "1:3: \"format\" is missing"},
      {"{\"format\":\"techsheet\",\"version\":1}", "1:35: \"kind\" is missing"},
      {"{\"format\":\"other\"", "1:18: the text ends before the object that it holds"},
      {"{\"format\":\"other\"}", "1:11: \"format\" must be \"techsheet\", not \"other\""},
      {"{\"version\":1}", "1:12: \"version\" must be after \"format\" in the file, not \"1\""},
      {"{\"format\":\"techsheet\",\"version\":2,\"kind\":\"CScmDesign\"}",
       "1:33: \"version\" must be 1 (a newer version of this program is needed), not \"2\""},
      {"{\"format\":\"techsheet\",\"version\":1,\"kind\":\"CDesign\"}",
       "1:42: \"kind\" must be the name of a kind of design, not \"CDesign\""},
      {kHead + ",\n\"layer\":[]}", "2:1: \"layer\" is no key of this object"},
      {kHead + ",\"layers\":[],\n\"l\\u0061yers\":[]}", "2:1: \"layers\" stands in this object twice"},
      {kHead + ",\"layers\":{}}", "1:64: \"layers\" must be a list of objects, not an object"},
      {kHead + ",\"layers\":[\n7]}", "2:1: \"layers\" must be an object in braces, not \"7\""},
      {kHead + ",\"layers\":[\n{\"side\":0,\"side\":0}]}", "2:11: \"side\" stands in this object twice"},
      {kHead + ",\"layers\":[\n{\"name\":7}]}", "2:9: \"name\" must be a text, not \"7\""},
      {kHead + ",\"layers\":[\n{\"name\":\"\\ud800\"}]}",
       "2:9: \"name\" must be a text with valid escapes, not \"\\ud800\""},
      {kHead + ",\"layers\":[\n{\"name\":\"a\":\"b\"}]}",
       "2:12: this is no JSON: The JSON document has an improper structure: missing or superfluous commas, "
       "braces, missing keys, etc."},
      {kHead + ",\"layers\":[\n{\"name\":\"a\"},{\"name\":\"a\"}]}", "2:14: \"a\" stands in \"layers\" twice"},
      {kHead + ",\"layers\":[\n{\"side\":4}]}", "2:9: \"side\" must be one of 0, 2, 1, 3, not \"4\""},
      {kHead + ",\"layers\":[\n{\"displayed\":1}]}", "2:14: \"displayed\" must be true or false, not \"1\""},
      {kHead + ",\"layers\":[\n{\"colour\":\"red\"}]}", "2:11: \"colour\" must be a colour, \"#RRGGBB\", not \"red\""},
      {kHead + ",\"layers\":[\n{\"type\":\"" + wide + "\"}]}",
       "2:9: \"type\" names \"" + wide.substr(0, 60) + "...\", which this file does not hold"},
      {kHead + ",\"layers\":[\n{\"type\":nul}]}", "2:9: \"type\" must be a name or null, not \"nul\""},
      {kHead + ",\"trackStyles\":[\n{\"width\":2147483648}]}",
       "2:10: \"width\" must be a whole number from -2147483648 to 2147483647, not \"2147483648\""},
      {kHead + ",\"trackStyles\":[\n{\"width\":1.0}]}",
       "2:10: \"width\" must be a whole number from -2147483648 to 2147483647, not \"1.0\""},
      {kHead + ",\"units\":{\"type\":1,\n\"precision\":5}}",
       "2:13: \"precision\" must be a whole number from 0 to 4, not \"5\""},
      {kHead + ",\"colours\":{\"visible\":\n[128]}}",
       "2:2: \"visible\" must be a whole number from 0 to 127, not \"128\""},
      {kHead + ",\"notes\":[{\"position\":\n[1]}]}", "2:1: \"position\" must be a place, [x,y], not a list"},
      {kHead + ",\"notes\":[{\"position\":\n[1,2,3]}]}", "2:6: \"position\" must be a place of two numbers, not \"3\""},
      {kHead + ",\"notes\":[{\"text\":\n\"a\nb\"}]}", "2:1: this text is not closed in its line"},
      {kHead + "}\n{}", "2:1: nothing may stand behind the closing brace"},
      {"{\"format\":\"techsheet\",\"version\":1,\"kind\":\"CPcbDesign\"}",
       "1:1: The first of the layers, and no other, must be the built-in one: a name that begins with \"[\", "
       "side 3, usage 1, bias 1 and no type"},
      {kHead + ",\"symbols\":[" + CString(100'000, '['), "1:100066: the text ends before the object that it holds"},
      {kHead + ",\"symbols\":" + CString(100'000, '[') + CString(100'000, ']') + "}",
       "1:66: \"symbols\" must be an object in braces, not a list"},
  };
  for (const SBadText& bad : table) {
    const auto read = ParseDesign(bad.text, "text");
    EXPECT_EQ(read ? "read" : read.Error(), "text:" + bad.error + ".") << bad.text.substr(0, 200);
  }
}

TEST(DesignFileTest, TheBuiltInLayerIsOneAndFirst) {
  const CString head = "{\"format\":\"techsheet\",\"version\":1,\"kind\":\"CPcbSymbolLibrary\",\"layers\":[";
  const CString builtIn = "{\"name\":\"[All layers]\",\"side\":3,\"usage\":1,\"bias\":1}";
  const auto reads = [&](const CString& layers) { return bool{ParseDesign(head + layers + "]}", "text")}; };
  EXPECT_TRUE(reads(builtIn + ",{\"name\":\"Top\"}"));
  EXPECT_FALSE(reads("{\"name\":\"Top\"}," + builtIn));
  EXPECT_FALSE(reads(builtIn + ",{\"name\":\"[More]\"}"));
  EXPECT_FALSE(reads("{\"name\":\"[All layers]\",\"side\":2,\"usage\":1,\"bias\":1}"));
}

TEST(DesignFileTest, KeysAndCollectionsMayComeInAnyOrder) {
  const CString text = R"({"format":"techsheet", "version":1, "kind":"CPcbDesign",
    "nets":[{"netClass":"Later","vias":[{"position":[1,-2],"span":"Through"}],"name":"GND"}],
    "layerSpans":[{"bottomLayer":"Bottom","topLayer":"Top","name":"Through"}],
    "netClasses":[{"name":"Later"}],
    "layers":[{"name":"[All layers]","side":3,"usage":1,"bias":1},{"net":"GND","name":"Top"},{"name":"Bottom"}],
    "defaults":{"netClass":"L\u0061ter"}})";
  const std::unique_ptr<CTechnology> technology = Parsed(text);
  ASSERT_TRUE(technology);
  EXPECT_EQ(technology->GetDefaults()->GetNetClass(), technology->FindNetClass("Later"));
  EXPECT_EQ(technology->FindLayerSpan("Through")->GetTopLayer()->GetNet(), technology->FindNet("GND"));
  EXPECT_EQ(technology->FindNetClass("Later")->UseCount(), 2);
  EXPECT_EQ(technology->FindLayerSpan("Through")->UseCount(), 1);
}

TEST(DesignFileTest, AFileCutOrDamagedAnywhereIsNeverHalfRead) {
  CProject project(EContent::Empty);
  project.designFiles = {"a.tspcb", "b c.tsscm"};
  for (CCollectionBase* home : std::initializer_list<CCollectionBase*>{&project.layers, &project.padStyles,
                                                                       &project.hatchStyles, &project.coppers})
    AddOneOfEach(*home, 1);
  ChangeEverything(project);
  const CString whole = DesignText(project);
  for (std::size_t size = 0; size + 2 < whole.size(); ++size) {
    const auto read = ParseDesign(whole.substr(0, size), "text");
    ASSERT_FALSE(read) << size;
    ASSERT_TRUE(read.Error().starts_with("text:")) << read.Error();
  }
  // A damaged byte may yield another design, which then has a text of its own; never one that does not read back.
  for (std::size_t at = 0; at < whole.size(); ++at) {
    for (const char byte : {'"', ','}) {
      CString damaged = whole;
      damaged[at] = byte;
      const auto read = ParseDesign(damaged, "text");
      if (!read || damaged == whole) continue;
      const CString text = DesignText(**read);
      const auto again = ParseDesign(text, "text");
      ASSERT_TRUE(again) << again.Error();
      ASSERT_EQ(DesignText(**again), text) << at << byte;
    }
  }
}

// ---- Files

class DesignFileOnDisk : public ::testing::Test {
 protected:
  void SetUp() override { InstallFileAccess(); }
  CString Path(const CString& name) const { return m_folder.Path() / name; }
  CTemporaryFolder m_folder;
};

TEST_F(DesignFileOnDisk, SavedDesignsAreUnmodifiedAndWhatCouldNotBeReadAgainIsNotWritten) {
  CPcbDesign design;
  design.SetName("Amplifier");
  ASSERT_TRUE(CDesign::SaveDesign(Path("a.tspcb"), &design)) << CAppError::GetLastErrorString();
  EXPECT_FALSE(design.GetChanged());
  const std::unique_ptr<CDesign> again(CDesign::ReadDesign(Path("a.tspcb")));
  ASSERT_TRUE(again) << CAppError::GetLastErrorString();
  EXPECT_EQ(StateOf(*again), StateOf(design));
  EXPECT_FALSE(again->GetChanged());
  design.FindLayer("Bottom")->SetName("Top");
  EXPECT_FALSE(CDesign::SaveDesign(Path("a.tspcb"), &design));
  EXPECT_EQ(CAppError::GetLastErrorString(), "\"" + Path("a.tspcb") +
                                                 "\" is not written, since it could not be read again: Layer: the "
                                                 "name \"Top\" occurs more than once.");
  EXPECT_TRUE(design.GetChanged());
  EXPECT_TRUE(ReadDesignFile(Path("a.tspcb")));

  const std::size_t size = DesignText(CPcbDesign()).size();
  EXPECT_TRUE(DesignFileText(CPcbDesign(), size));
  EXPECT_FALSE(DesignFileText(CPcbDesign(), size - 1));
}

TEST_F(DesignFileOnDisk, AProjectOpensAllItsDesignsOrNone) {
  CProject project;
  project.designFiles = {"a.tspcb", "sub/b.tsscm"};
  std::filesystem::create_directory(m_folder.Path() / "sub");
  ASSERT_TRUE(WriteDesignFile(Path("p.tsprj"), project));
  ASSERT_TRUE(WriteDesignFile(Path("a.tspcb"), CPcbDesign()));
  const CResult<std::unique_ptr<CTechnology>> read = ReadDesignFile(Path("p.tsprj"));
  ASSERT_TRUE(read) << read.Error();
  CProject* const opened = DynamicDowncast<CProject>(read->get());
  ASSERT_TRUE(opened);
  const auto open = [&] { return OpenProjectDesigns(*opened, Path("p.tsprj")); };

  auto designs = open();
  ASSERT_FALSE(designs);
  EXPECT_NE(designs.Error().find("sub/b.tsscm"), CString::npos);
  ASSERT_TRUE(WriteDesignFile(Path("sub/b.tsscm"), CScmSymbolLibrary()));
  designs = open();
  ASSERT_FALSE(designs);
  EXPECT_EQ(designs.Error(), Path("sub/b.tsscm") + ": this is a library, not a design.");
  EXPECT_TRUE(opened->Designs().empty());

  ASSERT_TRUE(WriteDesignFile(Path("sub/b.tsscm"), CScmDesign()));
  designs = open();
  ASSERT_TRUE(designs) << designs.Error();
  ASSERT_EQ(opened->Designs().size(), 2u);
  EXPECT_EQ(opened->Designs()[1]->GetProject(), opened);
}

// ---- The documentation

CString TypeText(const CTechnology& technology, const CFieldType& type) {
  switch (type.fieldClass) {
    case EFieldClass::Text: return "text";
    case EFieldClass::Name: return "name";
    case EFieldClass::Length: return "length";
    case EFieldClass::Integer: return "number";
    case EFieldClass::Boolean: return "true or false";
    case EFieldClass::Colour: return "colour";
    case EFieldClass::Point: return "place";
    case EFieldClass::Points: return "places";
    case EFieldClass::Angle: return "angle";
    case EFieldClass::Flags: return "flags";
    case EFieldClass::Reference:
      return CString("name in `") + technology.CollectionOf(*type.target())->Name() + "`, or null";
    case EFieldClass::Code: break;
  }
  CString text;
  for (const SChoice& choice : type.choices())
    text += (text.empty() ? "" : ", ") + IntText(choice.value) + " " + TextOf(choice.text);
  return text;
}

CString ValueText(const CField& field, const void* value) {
  switch (field.type->fieldClass) {
    case EFieldClass::Text: return "\"" + *static_cast<const CString*>(value) + "\"";
    case EFieldClass::Name: return "";
    case EFieldClass::Boolean: return *static_cast<const bool*>(value) ? "true" : "false";
    case EFieldClass::Colour: return "\"" + ColourText(*static_cast<const CColour*>(value)) + "\"";
    case EFieldClass::Point: return "[0,0]";
    case EFieldClass::Points:
    case EFieldClass::Flags: return "[]";
    case EFieldClass::Reference: return "null";
    default: return IntText(*static_cast<const int*>(value));
  }
}

/// The tables of keys as the page on the file format holds them. Lists whose records have the same keys share one.
struct SKeyTables {
  struct STable {
    CString names, rows;
  };
  std::vector<STable> tables;

  void Add(const CTechnology& technology, const CString& name, const CRecordBase& record) {
    CString rows;
    for (const CField& field : record.Kind().fields)
      rows += CString("| ") + field.name + " | " + TypeText(technology, *field.type) + " | " +
              ValueText(field, &field.As<char>(record.FieldsAddress())) + " |\n";
    for (std::size_t i = 0; const CCollectionBase* child = record.Child(i); ++i)
      rows += CString("| ") + child->Name() + " | list | [] |\n";
    const auto same = std::find_if(tables.begin(), tables.end(), [&](const STable& one) { return one.rows == rows; });
    if (same == tables.end()) {
      tables.push_back({"`" + name + "`", rows});
    } else {
      same->names += ", `" + name + "`";
    }
    for (std::size_t i = 0; const CCollectionBase* child = record.Child(i); ++i)
      Add(technology, name + "." + child->Name(), *child->Kind().make());
  }
};

TEST(DesignFileTest, TheDocumentationListsEveryKeyWithItsTypeAndDefault) {
  const CResult<CString> page = ReadFileLimited(TECHSHEET_SOURCE_DIR "/docs/file-format.md", 1 << 20);
  ASSERT_TRUE(page) << page.Error();
  const CPcbDesign design(EContent::Empty);
  SKeyTables keys;
  for (const CTechnology::SSingle& single : design.Singles()) keys.Add(design, single.name, *single.record);
  for (const CCollectionBase* home : design.Collections()) keys.Add(design, home->Name(), *home->Kind().make());
  CString text;
  for (const auto& [names, rows] : keys.tables)
    text += "\n### " + names + "\n\n| Key | Value | Left out for |\n|---|---|---|\n" + rows;
  EXPECT_TRUE(page->ends_with(text)) << "The page should end so:\n" << text;
}

// What this fails for is made again by techsheet-examples.
TEST(DesignFileTest, TheExamplesAreTheFilesThatTheProgramMakes) {
  const CString folder = TECHSHEET_SOURCE_DIR "/examples/";
  for (const SExampleDesign& example : ExampleDesigns()) {
    const std::unique_ptr<CTechnology> made = example.make();
    EXPECT_EQ(made->CheckValid(), CStringArray()) << example.file;
    const CResult<CString> text = ReadFileLimited(folder + example.file, kMaxDesignFileSize);
    ASSERT_TRUE(text) << text.Error();
    EXPECT_TRUE(*text == DesignText(*made)) << example.file;
    const CResult<std::unique_ptr<CTechnology>> read = ReadDesignFile(folder + example.file);
    ASSERT_TRUE(read) << read.Error();
    EXPECT_EQ(StateOf(**read), StateOf(*made));
  }
}

TEST_F(DesignFileOnDisk, LibrariesShareTheTechnologyFilesOfWhatTheyHold) {
  const struct {
    const CRuntimeClass *library, *held;
  } cases[] = {{CPcbSymbolLibrary::GetThisClass(), CPcbSymDesign::GetThisClass()},
               {CScmSymbolLibrary::GetThisClass(), CScmSymDesign::GetThisClass()}};
  for (const auto& c : cases) {
    const CString file = Path("technology." + CDesign::GetTechnologyFileExtension(c.library));
    EXPECT_TRUE(file.ends_with("." + CDesign::GetFileExtension(c.held) + "t")) << file;
    ASSERT_TRUE(WriteDesignFile(file, *MakeTechnology(c.held->name, EContent::DefaultTechnology)));
    const std::unique_ptr<CDesign> read(CDesign::ReadDesign(file));
    EXPECT_TRUE(read && read->GetRuntimeClass() == c.held) << CAppError::GetLastErrorString();
  }
}

}  // namespace
