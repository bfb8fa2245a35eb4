#include "interchange/boardimport.h"

#include <algorithm>
#include <filesystem>

#include "interchange/boardcontext.h"
#include "model/services/userinterface.h"
#include "storage/checkedwriter.h"

namespace {
constexpr std::int64_t kOldestFormat = 4, kNewestFormat = 20241229;
constexpr std::int64_t kLastSingleClass = 20240108;  // the last format in which a net is in one class alone

class CBoardImport {
 public:
  CBoardImport(CPcbDesign& design, CImportSummary& summary) : m_context(design, summary) {}

  /// The parts of the board that others refer to. True when the classes stand in the board itself.
  bool ReadHead(CSNode board);
  void ReadProject(const CString& text) { m_context.rules.ReadProject(ReadJson(text)); }
  void ReadItems(CSNode board, std::size_t size);

 private:
  void ReadTitle(CSNode title);
  std::vector<CNetClass*> AddClasses();

  SBoardContext m_context;
};

bool CBoardImport::ReadHead(CSNode board) {
  if (board.Tag() != "kicad_pcb")
    Fault(board, "this is no board: it begins with \"" + CString(board.Tag()) + "\", not with \"kicad_pcb\"");
  if (!board.Find("version")) Fault(board, "the board does not say its format: (version ...)");
  const CSNode version = Word(board.Find("version"));
  const std::int64_t format = Integer(version);
  if (format < kOldestFormat) Fault(version, "boards of formats before 4 cannot be read");
  const bool isNewer = format > kNewestFormat;
  const CString args[] = {IntText(format), IntText(kNewestFormat)};
  m_context.summary.Say("formats", FormatText(isNewer ? "Board format %1, newer than this program knows (%2): what is "
                                                        "new in it may be missing or wrong"
                                                      : "Board format %1",
                                              args));
  const CSNode layers = board.Find("layers");
  if (!layers)
    m_context.summary.Say("formats", "The board lacks its table of layers and gets the usual two-layer stack");
  m_context.layers.emplace(layers, format, m_context.design, m_context.names);
  m_context.rules.classes.SetMerging(format > kLastSingleClass);

  bool hasClasses = false;
  for (const CSNode value : board) {
    if (value.Tag() == "net_class") {
      m_context.rules.ReadClass(value);
      hasClasses = true;
    } else if (value.Tag() == "setup") {
      m_context.rules.ReadSetup(value);
      if (const CSNode origin = value.Find("aux_axis_origin")) m_context.design.SetCoordOrigin(Point(origin));
    } else if (value.Tag() == "title_block") {
      ReadTitle(value);
    }
  }
  return hasClasses;
}

void CBoardImport::ReadTitle(CSNode title) {
  for (const CSNode value : title) {
    if (value.Tag() == "title") {
      m_context.design.DesignValues().Set(&SDesignValuesFields::title, CString(Word(value).Text()));
    } else if (value.Tag() == "rev") {
      m_context.design.DesignValues().Set(&SDesignValuesFields::revision, CString(Word(value).Text()));
    } else {
      m_context.LeaveOut(title, value);
    }
  }
}

std::vector<CNetClass*> CBoardImport::AddClasses() {
  std::vector<CNetClass*> classes;
  CBoardStyles& styles = m_context.styles;
  const int leastWidth = m_context.rules.spacings.minimumTrackWidth.value;
  CTrackStyle* const leastStyle = leastWidth > 0 ? styles.Track(leastWidth) : nullptr;
  for (const SClassRule& rule : m_context.rules.classes.All()) {
    CNetClass* const standard = m_context.design.GetDefaults()->GetNetClass();
    const CString name = m_context.names.Take("net class", rule.name);
    CNetClass& made = classes.empty() ? *standard : AddRecord(m_context.design.netClasses, {standard->Values()});
    classes.push_back(&made);
    made.SetName(name);
    const auto width = rule[EClassValue::TrackWidth];
    made.SetTrackStyles(leastStyle, width ? styles.Track(*width) : made.GetNominalStyle());
    if (const auto size = rule[EClassValue::ViaSize])
      made.SetViaStyle(styles.Via(*size, rule[EClassValue::ViaDrill].value_or(0)));
    if (const auto size = rule[EClassValue::MicroviaSize])
      made.Set(&SNetClassFields::microviaStyle, styles.Via(*size, rule[EClassValue::MicroviaDrill].value_or(0)));
    made.Set(&SNetClassFields::clearance, Dsu{rule[EClassValue::Clearance].value_or(0)});
    const auto pairWidth = rule[EClassValue::PairWidth], pairGap = rule[EClassValue::PairGap];
    made.Set(&SNetClassFields::diffPairEnabled, pairWidth.value_or(0) > 0 || pairGap.value_or(0) > 0);
    if (pairWidth) made.Set(&SNetClassFields::diffPairStyle, styles.Track(*pairWidth));
    made.Set(&SNetClassFields::diffPairGap, Dsu{pairGap.value_or(0)});
    made.Set(&SNetClassFields::diffPairViaGap, Dsu{rule[EClassValue::PairViaGap].value_or(0)});
    made.Set(&SNetClassFields::useOwnColour, rule.colour.has_value());
    if (rule.colour) made.Set(&SNetClassFields::ownColour, *rule.colour);
  }
  for (const int width : m_context.rules.trackWidths) styles.Track(width);
  for (const SViaSize& via : m_context.rules.viaSizes) styles.Via(via.size, via.drill);
  *static_cast<SDesignSpacingsFields*>(m_context.design.GetDesignSpacings()->FieldsAddress()) =
      m_context.rules.spacings;
  return classes;
}

void CBoardImport::ReadItems(CSNode board, std::size_t size) {
  CBoardNets& nets = m_context.nets;
  nets.Collect(board, m_context.summary);
  const std::vector<std::size_t> rules = m_context.rules.classes.Resolve(nets.Names());
  nets.AddTo(m_context.design, m_context.names, rules, AddClasses(), m_context.rules.netColours);
  constexpr std::size_t kStep = std::size_t{1} << 18;  // bytes between two reports
  CComponentReader components(m_context);
  std::size_t reported = 0;
  struct SEnd {  // also where a fault ends the reading
    std::size_t size;
    ~SEnd() { UserInterface().Progress("Reading the board", size, size); }
  };
  const SEnd end{size};
  for (const CSNode value : board) {
    if (value.At() >= reported + kStep) {
      reported = value.At();
      UserInterface().Progress("Reading the board", reported, size);
    }
    const std::string_view tag = value.Tag();
    constexpr std::string_view kHead[] = {"version", "layers", "setup", "title_block", "net", "net_class"};
    if (tag == "footprint" || tag == "module") {
      components.Add(value);
    } else if (std::find(std::begin(kHead), std::end(kHead), tag) == std::end(kHead)) {
      AddBoardItem(m_context, value);
    }
  }
}

/// Does `work` with the text of a file; false with `error` for a fault in it.
using CStep = CResult<void, SImportError>;

/// Does what may throw a fault in the text of a file.
template <class Work>
CStep InFile(const CString& path, const CString& text, const Work& work) {
  try {
    work();
    return {};
  } catch (const STextFault& fault) {
    return SFailed{SImportError{path, PlaceIn(text, fault.at), fault.reason}};
  } catch (const std::bad_alloc&) {
    throw;  // no fault of the file
  } catch (const std::exception& failure) {
    return SFailed{SImportError{path, {0, 0}, path + ": " + failure.what()}};
  }
}

CResult<CString, SImportError> ReadText(const CString& path) {
  CResult<CString> text = ReadFileLimited(path, CSList::kMaxSize);
  if (!text) return SFailed{SImportError{path, {0, 0}, text.Error()}};
  return std::move(*text);
}
}  // namespace

CString SImportError::Text() const { return place.line == 0 ? reason : FaultText(file, place, reason); }

namespace {
/// `projectPath` is empty for a board without a project file, `rulesPath` for one without a file of rules.
CResult<SImportedBoard, SImportError> Import(const CString& boardText, const CString& path, const CString& projectPath,
                                             const CString& rulesPath, const CString& name) {
  namespace fs = std::filesystem;
  SImportedBoard board{std::make_unique<CPcbDesign>(), {}};
  CPcbDesign& design = *board.design;
  design.Journal().SetRecording(false);
  if (IsValidUtf8(name)) design.SetName(name);
  std::optional<CSList> list;
  CBoardImport import(design, board.summary);
  bool hasClasses = false;
  CStep step = InFile(path, boardText, [&] { hasClasses = import.ReadHead(list.emplace(boardText).Root()); });
  if (!step) return SFailed{step.Error()};
  if (!projectPath.empty() && hasClasses)
    board.summary.Say("files", "The project file is not read, since the net classes stand in the board");
  if (!rulesPath.empty())
    board.summary.Say("files", "Left out: the design rules in " + Quoted(fs::path(rulesPath).filename().string()));
  if (!projectPath.empty() && !hasClasses) {
    const CResult<CString, SImportError> projectText = ReadText(projectPath);
    if (!projectText) return SFailed{projectText.Error()};
    step = InFile(projectPath, *projectText, [&] { import.ReadProject(*projectText); });
    if (!step) return SFailed{step.Error()};
  }
  for (const std::string_view word : list->WordsWithMarks())
    board.summary.MendItem("quotation marks within words are read as they stand", Quoted(word));
  step = InFile(path, boardText, [&] { import.ReadItems(list->Root(), boardText.size()); });
  if (!step) return SFailed{step.Error()};
  design.Journal().SetRecording(true);
  design.Journal().MarkModified();
  return board;
}
}  // namespace

CResult<SImportedBoard, SImportError> ImportBoardText(const CString& text, const CString& name) {
  return Import(text, name, {}, {}, {});
}

CResult<SImportedBoard, SImportError> ImportBoard(const CString& path) {
  namespace fs = std::filesystem;
  const CResult<CString, SImportError> boardText = ReadText(path);
  if (!boardText) return SFailed{boardText.Error()};
  // A link that leads nowhere was meant to be a file: reading it says what is wrong.
  const auto beside = [&](const char* extension) {
    std::error_code ignored;
    const fs::path file = fs::path(path).replace_extension(extension);
    return fs::exists(fs::symlink_status(file, ignored)) ? file.string() : CString();
  };
  return Import(*boardText, path, beside(".kicad_pro"), beside(".kicad_dru"), fs::path(path).stem().string());
}
