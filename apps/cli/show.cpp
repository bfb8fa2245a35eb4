#include <algorithm>

#include "cli/platform.h"
#include "cli/progress.h"
#include "cli/sections.h"
#include "cli/subcommands.h"
#include "cli/texttable.h"
#include "model/base/result.h"
#include "model/design/design.h"
#include "model/design/fieldtext.h"

namespace {
constexpr std::size_t kLongSection = 40;  // records that the overview shows in full
constexpr std::size_t kShortened = 10;    // and how many it shows of more

struct SShowOptions {
  CString path;
  CStringArray sections;
  CString format = "text";
  CString units;
  std::optional<CString> edition;
};

/// The words of the name of a collection, which begins with a small letter: "Net classes" for "netClasses".
CString Words(std::string_view name) {
  CString words;
  for (const char c : name) {
    if (c >= 'A' && c <= 'Z') words += ' ';
    words += LowerAscii(c);
  }
  words[0] = static_cast<char>(words[0] - ('a' - 'A'));
  return words;
}

/// `texts` with commas between them on lines of the usual width.
CString Wrapped(const char* title, const CStringArray& texts) {
  constexpr std::size_t kWidth = 100;
  CString text, line = CString("  ") + title;
  for (const CString& one : texts) {
    const bool isLast = &one == &texts.back();
    if (DisplayWidth(line) + DisplayWidth(one) > kWidth) {
      text += line.erase(line.find_last_not_of(' ') + 1) + "\n";
      line = "    ";
    }
    line += one + (isLast ? "" : ", ");
  }
  return text + line + "\n";
}

/// Units of which the design says nothing get as many decimals as a tenth of a micrometre or so asks for.
CUnits UnitsFor(const CTechnology& technology, const CString& name) {
  constexpr std::pair<std::string_view, int> kDecimals[] = {{"mil", 2}, {"mm", 4}, {"inch", 4}, {"um", 1}};
  for (const CUnits* const units : {technology.GetUnits(), technology.GetUnits2()})
    if (name.empty() || kDecimals[units->GetType()].first == name) return {units->GetType(), units->GetPrecision()};
  const auto* const at =
      std::find_if(std::begin(kDecimals), std::end(kDecimals), [&](const auto& one) { return one.first == name; });
  return {static_cast<int>(at - std::begin(kDecimals)), at->second};
}

class CShow {
 public:
  CShow(const CTechnology& technology, const CUnits& units)
      : m_technology(technology), m_units(units), m_all(SectionsOf(technology)), m_defaults(DefaultsOf(technology)) {}

  /// Chooses sections by name; none mean the overview. Fails for a name that is none.
  CResult<void> Choose(const CStringArray& names);
  CString Text(const CString& path) const;
  CString Json(const CString& path) const;

 private:
  static constexpr const char* kSummary = "summary";

  CString TitleText(const CString& path) const;
  CString SectionText(const SSection& section) const;
  CString SingleText(const SSection& section) const;
  void WriteSummary(CJsonWriter& json) const;
  void WriteRecord(CJsonWriter& json, const SSection::SRow& row) const;
  CStringArray Marks(const CRecordBase& record) const;
  /// The overview alone shortens anything: what was asked for is shown whole.
  CTextTable::ECells Cells() const { return m_isOverview ? CTextTable::ECells::Short : CTextTable::ECells::Whole; }
  bool IsColumnShown(const CField& field, const std::vector<SSection::SRow>& rows, const CRecordBase& usual) const;

  const CTechnology& m_technology;
  const CUnits& m_units;
  std::vector<SSection> m_all;
  std::set<const CRecordBase*> m_defaults;
  std::vector<const SSection*> m_chosen;  // null stands for the summary
  bool m_isOverview = false;
};

CResult<void> CShow::Choose(const CStringArray& names) {
  m_isOverview = names.empty();
  if (m_isOverview) {
    m_chosen.push_back(nullptr);
    for (const SSection& section : m_all)
      if (!section.IsItem() && section.children.empty()) m_chosen.push_back(&section);
  }
  for (const CString& name : names) {
    const auto at = std::find_if(m_all.begin(), m_all.end(),
                                 [&](const SSection& section) { return EqualNoCase(section.name, name); });
    if (at == m_all.end() && !EqualNoCase(name, kSummary)) {
      CString error =
          "There is no section \"" + name + "\". The sections of a " + KindText(m_technology) + " are: summary";
      for (const SSection& section : m_all)
        if (section.children.empty()) error += ", " + section.name;
      return SFailure{error + "; and what their records own, such as padStyles.exceptions."};
    }
    m_chosen.push_back(at == m_all.end() ? nullptr : &*at);
  }
  return {};
}

CStringArray CShow::Marks(const CRecordBase& record) const {
  CStringArray marks;
  if (record.IsBuiltIn()) marks.push_back("built-in");
  if (m_defaults.contains(&record)) marks.push_back("default");
  return marks;
}

// ---- Text

CString CShow::Text(const CString& path) const {
  CString text = TitleText(path);
  for (const SSection* section : m_chosen) {
    if (!section) {
      text += "\nsummary\n" + CountsText(m_all, m_technology);
    } else if (section->single) {
      text += '\n' + SingleText(*section);
    } else if (!m_isOverview || section->collection->Count() > 0) {
      text += '\n' + SectionText(*section);
    }
  }
  return text;
}

CString CShow::TitleText(const CString& path) const {
  CString text = VisibleText(InputName(path), true) + ": " + KindText(m_technology);
  if (const CString name = m_technology.GetObjectName(); !name.empty()) text += " \"" + VisibleText(name, true) + "\"";
  text += ", lengths in " + CString(CUnits::Suffix(m_units.GetType())) + "\n";
  if (const CProject* const project = DynamicDowncast<CProject>(&m_technology))
    for (const CString& file : project->designFiles) text += "  design " + VisibleText(file, true) + "\n";
  return text;
}

CString CShow::SingleText(const SSection& section) const {
  CTextTable table({{""}, {""}}, Cells());
  for (const CField& field : section.kind->fields) {
    const CString text = CellText(field, *section.single, m_units);
    if (!text.empty() && text != "-") table.AddRow({TextOf(field.title), text});
  }
  const CString text = table.Text(2);
  return section.name + "\n" + (text.empty() ? "  none\n" : text);
}

/// A column is worth its place when it tells records apart or says something: names, lengths other than 0, and whatever
/// is not the usual value in each row.
bool CShow::IsColumnShown(const CField& field, const std::vector<SSection::SRow>& rows,
                          const CRecordBase& usual) const {
  if (&field == usual.Kind().nameField) return true;
  static constexpr Dsu kNoLength;
  const CFieldType& type = *field.type;
  if (type.fieldClass == EFieldClass::Length && !type.equal(&field.As<Dsu>(usual.FieldsAddress()), &kNoLength))
    return true;
  return std::any_of(rows.begin(), rows.end(),
                     [&](const SSection::SRow& row) { return !field.HasEqual(*row.record, usual); });
}

CString CShow::SectionText(const SSection& section) const {
  std::vector<SSection::SRow> rows = section.Rows();
  CString title = section.name + " (" + IntText(static_cast<std::int64_t>(rows.size())) + ")\n";
  if (rows.empty()) return title;
  const std::unique_ptr<CRecordBase> usual = section.kind->make();
  const std::size_t left = m_isOverview && rows.size() > kLongSection ? rows.size() - kShortened : 0;
  rows.resize(rows.size() - left);

  std::vector<CTextTable::SColumn> columns;
  std::vector<const CField*> fields;
  const bool isOwned = !section.children.empty();
  if (isOwned) columns.push_back({TextOf(Text::Owner)});
  CStringArray everywhere;
  for (const CField& field : section.kind->fields) {
    if (IsColumnShown(field, rows, *usual)) {
      fields.push_back(&field);
      columns.push_back({TextOf(field.title), IsQuantity(*field.type)});
    } else {
      everywhere.push_back(TextOf(field.title) + " " + CellText(field, *rows.front().record, m_units));
    }
  }
  std::vector<std::size_t> children;
  for (std::size_t i = 0; const CCollectionBase* child = usual->Child(i); ++i) {
    if (std::all_of(rows.begin(), rows.end(), [i](const auto& row) { return row.record->Child(i)->Count() == 0; }))
      continue;
    children.push_back(i);
    columns.push_back({Words(child->Name()), true});
  }
  columns.push_back({""});

  CTextTable table(std::move(columns), Cells());
  for (const SSection::SRow& row : rows) {
    CStringArray cells;
    if (isOwned) cells.push_back(row.owner);
    for (const CField* const field : fields) cells.push_back(CellText(*field, *row.record, m_units));
    for (const std::size_t i : children)
      cells.push_back(IntText(static_cast<std::int64_t>(row.record->Child(i)->Count())));
    CString marks;
    for (const CString& mark : Marks(*row.record)) marks += (marks.empty() ? "" : ", ") + mark;
    cells.push_back(marks);
    table.AddRow(std::move(cells));
  }
  CString text = title + table.Text(2);
  if (left > 0) text += "  ... and " + IntText(static_cast<std::int64_t>(left)) + " more\n";
  return m_isOverview || everywhere.empty() ? text : text + Wrapped("everywhere: ", everywhere);
}

// ---- JSON

CString CShow::Json(const CString& path) const {
  CJsonWriter json;
  json.Object([&] {
    json.Key("file").Text(path);
    json.Key("kind").Text(m_technology.GetRuntimeClass()->name);
    json.Key("name").Text(m_technology.GetObjectName());
    json.Key("units").Text(CUnits::Suffix(m_units.GetType()));
    if (const CProject* const project = DynamicDowncast<CProject>(&m_technology))
      json.Key("designs").Texts(project->designFiles);
    json.Key("sections").Object([&] {
      for (const SSection* const section : m_chosen) {
        json.Key(section ? section->name : kSummary);
        if (!section) {
          WriteSummary(json);
        } else if (section->single) {
          WriteRecord(json, {section->single, {}});
        } else {
          json.Array(section->Rows(), [&](const SSection::SRow& row) { WriteRecord(json, row); });
        }
      }
    });
  });
  return json.Json() + "\n";
}

void CShow::WriteSummary(CJsonWriter& json) const {
  json.Object([&] {
    for (const SSectionCount& count : CountSections(m_all, m_technology)) {
      json.Key(count.name).Object([&] {
        json.Key("count").Integer(static_cast<std::int64_t>(count.count));
        json.Key("builtIn").Integer(static_cast<std::int64_t>(count.builtIn));
        json.Key("default").Integer(static_cast<std::int64_t>(count.defaults));
      });
    }
  });
}

void CShow::WriteRecord(CJsonWriter& json, const SSection::SRow& row) const {
  json.Object([&] {
    const CRecordBase& record = *row.record;
    if (!row.owner.empty()) json.Key("owner").Text(row.owner);
    for (const CField& field : record.Kind().fields) {
      json.Key(field.name);
      WriteField(json, field, record, m_units);
    }
    if (!record.Home()) return;  // neither used nor marked: it stands in a design once
    for (std::size_t i = 0; const CCollectionBase* child = record.Child(i); ++i)
      json.Key(child->Name()).Integer(static_cast<std::int64_t>(child->Count()));
    json.Key("used").Boolean(CTechnology::IsUsed(record));
    json.Key("marks").Texts(Marks(record));
  });
}

int Show(const SShowOptions& options) {
  CConsoleInterface console;
  const CUserInterfaceScope scope(console);
  if (const CResult<void> installed = InstallPlatform(options.edition); !installed)
    return Fail(EExit::WrongArguments, installed.Error());
  const std::unique_ptr<CTechnology> technology = OpenTechnology(options.path);
  if (!technology) return EExit::InvalidInput;
  const CUnits units = UnitsFor(*technology, options.units);
  CShow show(*technology, units);
  if (const CResult<void> chosen = show.Choose(options.sections); !chosen)
    return Fail(EExit::WrongArguments, chosen.Error());
  if (options.format == "json") return Print(show.Json(options.path), EReader::Program);
  return Print(show.Text(options.path));
}
}  // namespace

void AddShowCommand(CLI::App& app, int& exitStatus) {
  const auto options = std::make_shared<SShowOptions>();
  CLI::App* const command = app.add_subcommand("show", "Show the technology of a design, project or library");
  command->add_option("DESIGN", options->path, "the file to show; - is standard input")->type_name("")->required();
  command
      ->add_option("SECTION", options->sections,
                   "what to show of it: a collection such as layers, netClasses, padStyles, nets.tracks, "
                   "or summary; without one an overview")
      ->type_name("");
  command->add_option("--format", options->format, "text for people, or json with exact values in nanometres")
      ->transform(CLI::IsMember({"text", "json"}, CLI::ignore_case))
      ->capture_default_str();
  command->add_option("--units", options->units, "the units of lengths; those of the design unless given")
      ->transform(CLI::IsMember({"mm", "mil", "inch", "um"}, CLI::ignore_case));
  AddEditionOption(*command, options->edition);
  command->footer(kExitStatuses);
  command->callback([options, &exitStatus] { exitStatus = Show(*options); });
}
