#include <algorithm>
#include <cstring>
#include <numeric>
#include <random>
#include <unordered_map>
#include <unordered_set>

#include "bench/table.h"
#include "model/services/files.h"
#include "technology/layers/layertypespage.h"

namespace {

constexpr int kRecords = 10'000;
constexpr int kMost = 1'000'000;  // design units

CString Name(const char* what, int number) { return what + IntText(number); }

/// The numbers from 0 on in an order that no column shares.
std::vector<int> Shuffled(unsigned seed) {
  std::vector<int> numbers(kRecords);
  std::iota(numbers.begin(), numbers.end(), 0);
  std::shuffle(numbers.begin(), numbers.end(), std::mt19937(seed));
  return numbers;
}

/// The cell of the least grid that can be sorted and written: a number and its text.
struct SPlainCell {
  std::int64_t value = 0;
  CString text;
};
using CPlainRows = std::vector<std::vector<SPlainCell>>;
constexpr std::size_t kNameColumn = 1, kOversizeColumn = 9;

SPlainCell LengthCell(int dsu) {
  SPlainCell cell{dsu, {}};
  AppendInt(cell.text, dsu);
  return cell;
}

// ---- A page as it stands in the sheet

struct STypes {
  CPcbDesign design{EContent::Empty};
  STypes() {
    design.Journal().SetRecording(false);
    const std::vector<int> names = Shuffled(1), sizes = Shuffled(2);
    for (std::size_t i = 0; i < names.size(); ++i) {
      CLayerType type;
      type.SetName(Name("Layer type ", names[i]));
      type.SetOversizeType(EOversizeType::ByAmount);
      type.SetOversize(100'000 + sizes[i]);
      design.layerTypes.Add(type);
    }
    design.Journal().SetRecording(true);
  }
};

CPlainRows PlainRows(const CPcbDesign& design) {
  CPlainRows rows;
  rows.reserve(design.layerTypes.Count());
  for (const CLayerType& type : design.layerTypes) {
    const SLayerTypeFields& fields = type.Values();
    std::vector<SPlainCell>& row = rows.emplace_back();
    row.reserve(11);
    row.push_back({0, CTechnology::IsUsed(type) ? "X" : ""});
    row.push_back({0, fields.name.text});
    row.push_back({fields.usage.value, "Electrical"});
    for (const bool flag : {fields.surfacePads, fields.allLayerPads, fields.surfacePadInstances,
                            fields.allLayerPadInstances, fields.vias})
      row.push_back({flag, flag ? "Yes" : "No"});
    row.push_back({fields.oversizeType.value, "By amount"});
    row.push_back(LengthCell(fields.oversize.value));
    row.push_back({fields.placementArea, fields.placementArea ? "Yes" : "No"});
  }
  return rows;
}

void OpenPage(benchmark::State& state) {
  STypes on;
  CLayerTypesPage page(on.design);
  for (auto _ : state) page.OnInitDialog();
}
void FillPlainRows(benchmark::State& state) {
  STypes on;
  CPlainRows rows;
  for (auto _ : state) {
    rows.clear();
    rows = PlainRows(on.design);
    benchmark::DoNotOptimize(rows.data());
  }
}

/// By two columns in turn, each in an order that the other knows nothing of.
void SortPage(benchmark::State& state) {
  STypes on;
  CLayerTypesPage page(on.design);
  page.OnInitDialog();
  for (auto _ : state) {
    page.SortByColumn(page.Grid(), kNameColumn);
    page.SortByColumn(page.Grid(), kOversizeColumn);
  }
}
void SortKeys(benchmark::State& state) {
  struct SKey {
    std::string_view name;
    int oversize;
  };
  STypes on;
  std::vector<SKey> keys;
  for (const CLayerType& type : on.design.layerTypes) keys.push_back({type.GetName(), type.Values().oversize.value});
  for (auto _ : state) {
    std::stable_sort(keys.begin(), keys.end(), [](const SKey& a, const SKey& b) { return a.name < b.name; });
    std::stable_sort(keys.begin(), keys.end(), [](const SKey& a, const SKey& b) { return a.oversize < b.oversize; });
    benchmark::ClobberMemory();
  }
}

void ChangeUnits(benchmark::State& state) {
  STypes on;
  CLayerTypesPage page(on.design);
  page.OnInitDialog();
  for (auto _ : state) {
    CUnits& units = *on.design.GetUnits();
    units.SetType(units.GetType() == EUnitType::Mil ? EUnitType::Millimetre : EUnitType::Mil);
    CEvt::Send("UnitsChanged", &on.design);
  }
}
void RewritePlainRows(benchmark::State& state) {
  STypes on;
  CPlainRows rows = PlainRows(on.design);
  for (auto _ : state) {
    for (std::vector<SPlainCell>& row : rows) {
      SPlainCell& cell = row[kOversizeColumn];
      cell.text.clear();
      AppendInt(cell.text, cell.value);
    }
    benchmark::ClobberMemory();
  }
}

// ---- Apply

/// The numbers of a text style beside its size.
constexpr int STextStyleFields::* kNumbers[] = {
    &STextStyleFields::charWidthPercent, &STextStyleFields::interlineHeightPercent,
    &STextStyleFields::parameter1,       &STextStyleFields::parameter2,
    &STextStyleFields::parameter3,       &STextStyleFields::parameter4,
    &STextStyleFields::parameter5,       &STextStyleFields::parameter6};

constexpr int kNumberCount = std::size(kNumbers);

/// A page of two passes, which lets them be timed one by one.
class CStylesPage final : public CRecordPage {
  TECHSHEET_CLASS(CStylesPage, CRecordPage)
  static constexpr int kName = 1, kSize = 2, kFirstNumber = 3;

  explicit CStylesPage(CDesign& design)
      : CRecordPage(design, design.textStyles,
                    {.title = Text::LayerTypes,
                     .settings = "Settings\\Bench",
                     .nameError = Text::RowNameInvalid,
                     .inUse = Text::InUseOrRequired,
                     .exportName = Text::LayerTypesFile,
                     .validName = &ValidLayerTypeName}) {
    std::vector<CColumn> columns{UsedMark(), Column(&STextStyleFields::name), Column(&STextStyleFields::size)};
    for (int STextStyleFields::* const number : kNumbers) columns.push_back(Column(number).NotInFile());
    Columns(std::move(columns));
  }

  std::function<bool()> onChecked = [] { return true; };  // after the checking pass; false refuses the page
  std::function<void()> onWritten = [] {};

 protected:
  void CheckAll(CFindings& findings) const override {
    if (!onChecked()) findings.RefuseInSilence(Rows().Checked(1));
  }
  void Announce() override { onWritten(); }
};

struct SStyles {
  CPcbDesign design{EContent::Empty};
  CStylesPage page{design};
  int changes = 0;  // so far, which makes the next one another

  SStyles() {
    design.Journal().SetRecording(false);
    for (const int name : Shuffled(1)) {
      CTextStyle style;
      style.SetName(Name("Text style ", name));
      style.SetWidth(100'000 + name);
      design.textStyles.Add(style);
    }
    design.Journal().SetRecording(true);
    page.OnInitDialog();
  }
  /// Types into these columns of every row.
  void Change(int first, int last) {
    ++changes;
    for (int row = 1; row <= kRecords; ++row) {
      for (int col = first; col <= last; ++col) {
        CString why;
        const SInput input = col == CStylesPage::kName ? SInput::Text(Name(changes % 2 ? "A style " : "Style ", row))
                                                       : SInput::Value(std::int64_t{kMost + changes * kRecords + row});
        page.Grid().Enter(row, col, input, why);
      }
    }
  }
  void NewLevel() {
    design.EndUndoLevel();
    design.ResetUndoLevels();
    design.StartUndoLevel(1);
  }
};

/// Times Apply up to the end of its checks, which refuse it; the marks that follow check once more.
void TimeChecks(benchmark::State& state, SStyles& on) {
  bool isTimed = true;
  on.page.onChecked = [&] {
    if (std::exchange(isTimed, false)) state.PauseTiming();
    return false;
  };
  for (auto _ : state) {
    on.page.OnApply();
    state.ResumeTiming();
    isTimed = true;
  }
}

void CheckChangedRows(benchmark::State& state) {
  SStyles on;
  on.Change(CStylesPage::kName, CStylesPage::kSize);
  TimeChecks(state, on);
}
void InsertNamesParseLengths(benchmark::State& state) {
  SStyles on;
  CStringArray names, lengths;
  for (int i = 0; i < kRecords; ++i) {
    names.push_back(Name("A style ", i));
    lengths.push_back(IntText(kMost + i));
  }
  for (auto _ : state) {
    std::unordered_set<std::string_view> seen;
    seen.reserve(names.size());
    bool good = true;
    for (std::size_t i = 0; i < names.size(); ++i) {
      std::int64_t length = 0;
      good = seen.insert(names[i]).second && ParseInt(lengths[i], length) && good;
      benchmark::DoNotOptimize(length);
    }
    benchmark::DoNotOptimize(good);
  }
}

void ApplyNothing(benchmark::State& state) {
  SStyles on;
  const std::uint64_t revision = on.design.Journal().Revision();
  for (auto _ : state) on.page.OnApply();
  if (on.design.Journal().Revision() != revision) state.SkipWithError("nothing changed, and yet the journal grew");
}
void CheckNothing(benchmark::State& state) {
  SStyles on;
  TimeChecks(state, on);
}

template <int kFirst, int kLast>
void WriteColumns(benchmark::State& state) {
  SStyles on;
  on.page.onChecked = [&] {
    state.ResumeTiming();
    return true;
  };
  on.page.onWritten = [&] { state.PauseTiming(); };
  for (auto _ : state) {
    state.PauseTiming();
    on.NewLevel();
    on.Change(kFirst, kLast);
    on.page.OnApply();
    state.ResumeTiming();
  }
}
template <int kCount>
void AppendNumbers(benchmark::State& state) {
  SStyles on;
  std::vector<int*> fields;
  for (CTextStyle& style : on.design.textStyles)
    for (int i = 0; i < kCount; ++i)
      fields.push_back(&(static_cast<STextStyleFields*>(style.FieldsAddress())->*kNumbers[i]));
  AppendToBlockList(state, fields);
}
void EraseAndInsert(benchmark::State& state) {
  CStringArray names[2];
  std::unordered_map<CString, int> map;
  for (int i = 0; i < kRecords; ++i) {
    names[0].push_back(Name("A style ", i));
    names[1].push_back(Name("Style ", i));
    map.emplace(names[0].back(), i);
  }
  std::size_t turn = 0;
  for (auto _ : state) {
    const CStringArray& from = names[turn % 2];
    const CStringArray& to = names[++turn % 2];
    for (std::size_t i = 0; i < to.size(); ++i) {
      map.erase(from[i]);
      map.emplace(to[i], static_cast<int>(i));
    }
  }
}

// ---- Delimited files, held in memory

class CFileChooser final : public CNoUserInterface {
 public:
  std::optional<CString> ChooseFile(const SFileChooser&) override { return "styles.csv"; }

 private:
  CUserInterfaceScope m_installed{*this};
};

CString& TheFile() {
  static CString text;
  return text;
}
void InstallFileInMemory() {
  InstallFiles({[](const CString&, std::size_t) { return TheFile(); },
                [](const CString&, std::string_view text) { return TheFile() = text, CResult<void>(); }});
}

void Press(CPanel& page, const char* command) { page.FindCommand(command)->run(); }

void ExportPage(benchmark::State& state) {
  InstallFileInMemory();
  const CFileChooser chooser;
  SStyles on;
  for (auto _ : state) Press(on.page, "Export");
}
void WriteOneBuffer(benchmark::State& state) {
  SStyles on;
  for (auto _ : state) {
    CString text = "\"Name\",\"Size\"\n";
    for (const CTextStyle& style : on.design.textStyles) {
      ((text += '"') += style.GetName()) += "\",\"";
      AppendInt(text, style.GetWidth());
      text += "\"\n";
    }
    TheFile() = text;
  }
}

CString FileText(int more) {
  CString text;
  for (const int name : Shuffled(1)) text += "\"" + Name("Text style ", name) + "\",\"" + IntText(name + more) + "\"\n";
  return text;
}
/// Every width of the design becomes another one.
void ImportPage(benchmark::State& state) {
  InstallFileInMemory();
  const CFileChooser chooser;
  SStyles on;
  on.design.GetUnits()->SetType(EUnitType::Micrometre);
  const CString texts[] = {FileText(1), FileText(2)};
  std::size_t turn = 0;
  for (auto _ : state) {
    state.PauseTiming();
    on.NewLevel();
    TheFile() = texts[++turn % 2];
    state.ResumeTiming();
    Press(on.page, "Import");
  }
}
void SplitFindParse(benchmark::State& state) {
  const CString texts[] = {FileText(1), FileText(2)};
  std::unordered_map<std::string_view, std::int64_t> styles;
  const CStringArray names = [] {
    CStringArray all;
    for (int i = 0; i < kRecords; ++i) all.push_back(Name("Text style ", i));
    return all;
  }();
  for (const CString& name : names) styles.emplace(name, 0);
  std::size_t turn = 0;
  for (auto _ : state) {
    CString text = texts[++turn % 2];
    const char* at = text.data();
    for (const char* const end = at + text.size(); at < end;) {
      std::string_view fields[2];
      for (std::string_view& field : fields) {
        const auto* const close =
            static_cast<const char*>(std::memchr(at + 1, '"', static_cast<std::size_t>(end - at)));
        field = {at + 1, static_cast<std::size_t>(close - at - 1)};
        at = close + 2;
      }
      std::int64_t width = 0;
      if (ParseInt(fields[1], width)) styles.find(fields[0])->second = width;
    }
    benchmark::ClobberMemory();
  }
}

}  // namespace

std::span<const SRow> PageRows() {
  static const SRow kRows[] = {
      {"Open a page, a row / plain cells", kRecords, OpenPage, FillPlainRows, 4},
      {"Open a page, a row / QTableWidget", kRecords, OpenPage, QtPeers().openTable, 1 / 4.5},
      {"Sort a grid by a column / stable_sort of the keys", 2.0 * kRecords, SortPage, SortKeys, 2},
      {"Units change, a length / plain cells", kRecords, ChangeUnits, RewritePlainRows, 2},
      {"Units change, a length / QTableWidget", kRecords, ChangeUnits, QtPeers().changeUnits, 1 / 7.0},
      {"Check a changed row / hash-set insertion, integer parse", kRecords, CheckChangedRows, InsertNamesParseLengths,
       2},
      {"Write a changed number, 8 a row / block list", kNumberCount * kRecords,
       WriteColumns<CStylesPage::kFirstNumber, CStylesPage::kFirstNumber + kNumberCount - 1>,
       AppendNumbers<kNumberCount>, 8},
      {"Write a changed number, 1 a row / block list", kRecords,
       WriteColumns<CStylesPage::kFirstNumber, CStylesPage::kFirstNumber>, AppendNumbers<1>, 0},
      {"Write a changed name / unordered_map", kRecords, WriteColumns<CStylesPage::kName, CStylesPage::kName>,
       EraseAndInsert, 1.5},
      {"Apply with nothing changed, a row / its checks alone", kRecords, ApplyNothing, CheckNothing, 1.2},
      {"CSV export, a row / one buffer", kRecords, ExportPage, WriteOneBuffer, 1.5},
      {"CSV import, a row / memchr, hash look-up, parse", kRecords, ImportPage, SplitFindParse, 2},
  };
  return kRows;
}
