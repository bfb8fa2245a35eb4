#include "interchange/boardimport.h"

#include <algorithm>
#include <filesystem>

#include "interchange/boardcontext.h"
#include "model/services/userinterface.h"
#include "storage/checkedwriter.h"

namespace {
constexpr std::int64_t kOldestFormat = 4, kNewestFormat = 20241229;

class CBoardImport {
 public:
  CBoardImport(CPcbDesign& design, SImportSummary& summary) : m_context(design, summary) {}

  /// The parts of the board that others refer to. True when the classes stand in the board itself.
  bool ReadHead(CSNode board);
  void ReadProject(const CString& text) { m_context.rules.ReadProject(ReadJson(text)); }
  void ReadItems(CSNode board, std::size_t size);

 private:
  void ReadTitle(CSNode title);
  void AddClasses();
  void AddNets(CSNode board);

  SBoardContext m_context;
  std::vector<CNetClass*> m_classes;  // by index into the rules
};

bool CBoardImport::ReadHead(CSNode board) {
  if (board.Tag() != "kicad_pcb")
    Fault(board, "this is no board: it begins with \"" + CString(board.Tag()) + "\", not with \"kicad_pcb\"");
  if (!board.Find("version")) Fault(board, "the board does not say its format: (version ...)");
  const CSNode version = Word(board.Find("version"));
  const std::int64_t format = Integer(version);
  if (format < kOldestFormat) Fault(version, "boards of formats before 4 cannot be read");
  if (format > kNewestFormat) Fault(version, "this board is of a newer format than can be read, which is 20241229");
  m_context.summary.format = format;
  const CSNode layers = board.Find("layers");
  if (!layers) Fault(board, "the board lacks its table of layers");
  m_context.layers.emplace(layers, format, m_context.design, m_context.names);

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

void CBoardImport::AddClasses() {
  CBoardStyles& styles = m_context.styles;
  for (const SClassRule& rule : m_context.rules.Classes()) {
    CNetClass* const standard = m_context.design.GetDefaults()->GetNetClass();
    const CString name = m_context.names.Take("net class", rule.name);
    CNetClass& made = m_classes.empty() ? *standard : AddRecord(m_context.design.netClasses, {standard->Values()});
    m_classes.push_back(&made);
    made.SetName(name);
    if (const auto width = rule[EClassValue::TrackWidth])
      made.SetTrackStyles(styles.Track(*width), styles.Track(*width));
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
}

void CBoardImport::AddNets(CSNode board) {
  for (const CSNode value : board) {
    if (value.Tag() != "net") continue;
    const std::int64_t code = Integer(Word(value, 0));
    SBoardContext::SNet net;
    const std::string_view name = Word(value, 1).Text();
    if (code != 0) {
      net.rule = m_context.rules.ClassOf(name);
      net.net = m_context.design.AddNet(m_context.names.Take("net", name), m_classes[net.rule]);
    }
    if (!m_context.nets.emplace(code, net).second) Fault(value, "the net " + IntText(code) + " is there twice");
  }
  m_context.nets.try_emplace(0);
  m_context.rules.CountUnused();
}

void CBoardImport::ReadItems(CSNode board, std::size_t size) {
  m_context.rules.Finish();
  AddClasses();
  AddNets(board);
  constexpr std::size_t kStep = std::size_t{1} << 18;  // bytes between two reports
  CComponentReader components(m_context);
  std::size_t reported = 0;
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
  UserInterface().Progress("Reading the board", size, size);
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

CString SImportError::Text() const {
  if (place.line == 0) return reason;
  const CString args[] = {file, IntText(static_cast<std::int64_t>(place.line)),
                          IntText(static_cast<std::int64_t>(place.column)), reason};
  return FormatText("%1, line %2, column %3: %4", args);
}

CResult<SImportedBoard, SImportError> ImportBoard(const CString& path) {
  namespace fs = std::filesystem;
  const CResult<CString, SImportError> boardText = ReadText(path);
  if (!boardText) return SFailed{boardText.Error()};
  const CString projectPath = fs::path(path).replace_extension(".kicad_pro").string();
  std::error_code ignored;
  const bool hasProject = fs::exists(projectPath, ignored);

  SImportedBoard board{std::make_unique<CPcbDesign>(), {}};
  CPcbDesign& design = *board.design;
  design.Journal().SetRecording(false);
  if (const CString name = fs::path(path).stem().string(); IsValidUtf8(name)) design.SetName(name);
  std::optional<CSList> list;
  CBoardImport import(design, board.summary);
  bool hasClasses = false;
  CStep step = InFile(path, *boardText, [&] { hasClasses = import.ReadHead(list.emplace(*boardText).Root()); });
  if (!step) return SFailed{step.Error()};
  if (hasProject && hasClasses) board.summary.LeaveOut("project file, since the net classes stand in the board");
  if (hasProject && !hasClasses) {
    const CResult<CString, SImportError> projectText = ReadText(projectPath);
    if (!projectText) return SFailed{projectText.Error()};
    step = InFile(projectPath, *projectText, [&] { import.ReadProject(*projectText); });
    if (!step) return SFailed{step.Error()};
  }
  step = InFile(path, *boardText, [&] { import.ReadItems(list->Root(), boardText->size()); });
  if (!step) return SFailed{step.Error()};
  design.Journal().SetRecording(true);
  design.Journal().MarkModified();
  return board;
}
