#include "technology/styles/textstylespage.h"

#include "model/base/textfault.h"
#include "model/services/application.h"
#include "technology/styles/stylerules.h"

namespace {
using F = STextStyleFields;
constexpr const char* kDrillTable = "[Drill Table]";

/// Whether the edition knows the widths of characters and the distances of lines.

std::int64_t FontValue(const CRecordBase& values) {
  return reinterpret_cast<std::int64_t>(CTypeFontList::Find(FieldsOf<CTextStyle>(values).font));
}
bool IsStroked(const CRecordBase& values) { return FontValue(values) == 0; }
bool IsBarcode(const CRecordBase& values) { return static_cast<const CTextStyle&>(values).IsBarcodeFont(); }

CColumn NameColumn() { return Column<CTextStyle>(Text::Name, &F::name).ReadOnlyWhen(&IsBuiltInStyle).Width(160); }
CColumn SizeColumn() {
  return Column<CTextStyle>(Text::Size, &F::size).CalledInForm("Size").ImportError(Text::RecordLengthInvalid);
}
CColumn LineWidthColumn() {
  return Column<CTextStyle>(Text::LineWidth, &F::lineWidth).ImportError(Text::RecordLengthInvalid);
}
CColumn FontColumn() {
  return Column<CTextStyle>(Text::Font, &F::font).ChosenFrom(&CFontComboBox::Fill, FontValue).Width(140);
}
CColumn UnderlinedColumn() { return Column<CTextStyle>(Text::Underlined, &F::underlined); }

/// Those that an edition may lack, without meaning for a TrueType font.
std::vector<CColumn> ExtendedColumns() {
  return {Column<CTextStyle>(Text::Proportional, &F::proportional).EnabledWhen(IsStroked),
          Column<CTextStyle>(Text::CharacterWidth, &F::charWidthPercent).EnabledWhen(IsStroked),
          Column<CTextStyle>(Text::LineDistance, &F::interlineHeightPercent).EnabledWhen(IsStroked)};
}

std::vector<CColumn> BarcodeColumns() {
  std::vector<CColumn> columns{
      Column<CTextStyle>(Text::NarrowBar, &F::parameter1), Column<CTextStyle>(Text::WideBar, &F::parameter2),
      Column<CTextStyle>(Text::BarGap, &F::parameter3),    Column<CTextStyle>(Text::QuietZone, &F::parameter4),
      Column<CTextStyle>(Text::BarHeight, &F::parameter5), Column<CTextStyle>(Text::TextBelow, &F::parameter6)};
  for (CColumn& column : columns) column.InFormWhen(IsBarcode);
  return columns;
}

enum class EColumnsOf { Grid, Form, File };
std::vector<CColumn> MakeColumns(EColumnsOf place) {
  std::vector<CColumn> columns{NameColumn(), SizeColumn(), LineWidthColumn(), FontColumn(), UnderlinedColumn()};
  const auto add = [&](std::vector<CColumn> more) { columns.insert(columns.end(), more.begin(), more.end()); };
  if (place == EColumnsOf::Grid) columns.insert(columns.begin(), UsedMark());
  if (place == EColumnsOf::File) add(BarcodeColumns());
  if (place == EColumnsOf::File || CApplication::IsExtended()) add(ExtendedColumns());
  if (place == EColumnsOf::Form) add(BarcodeColumns());
  return columns;
}
}  // namespace

CComboItems CFontComboBox::Fill(const CTechnology&) {
  CTypeFontList::Load();
  CComboItems items;
  for (const CBaseFont* font : BuiltInFonts())
    if (!CTypeFontList::Find(font->GetName())) items.push_back({0, font->GetName()});
  for (const CTrueTypeFont* font : CTypeFontList::All())
    items.push_back({reinterpret_cast<std::int64_t>(font), font->GetName()});
  return items;
}

CTextStylesPage::CTextStylesPage(CDesign& design)
    : CRecordPage(design,
                  {.title = Text::TextStyles,
                   .settings = "Settings\\Styles\\Text",
                   .nameError = Text::StyleNameInvalid,
                   .inUse = Text::InUse,
                   .exportName = Text::TextStylesFile,
                   .validName = &ValidTextStyleName,
                   .layout = ELayout::BeforeWriting,
                   .styles = true,
                   .redraws = true,
                   .nameErrorHasRow = false},
                  design.textStyles, MakeColumns(EColumnsOf::Grid)) {
  SetFileColumns(MakeColumns(EColumnsOf::File));
  SetFormColumns(MakeColumns(EColumnsOf::Form));
}

void CTextStylesPage::OnInitDialog() {
  CTypeFontList::Load();
  CRecordPage::OnInitDialog();
}

bool CTextStylesPage::CheckRow(const SRowCheck& check) {
  const F& style = FieldsOf<CTextStyle>(check.values);
  if (!IsValidDimension(style.size.value, &m_design)) return FailAt(check, &F::size);
  if (!IsValidDimension(style.lineWidth.value, &m_design)) return FailAt(check, &F::lineWidth);
  return check.pass != EPass::Import || (!style.font.empty() && !HasControlCharacters(style.font)) ||
         Refuse(check, &F::font, Text::FontNameInvalid, style.font);
}

bool CTextStylesPage::MayDelete(int row) {
  if (!CRecordPage::MayDelete(row)) return false;
  const CRecordBase& style = *m_grid.GetItemData(row);
  const bool keepsDrillTable = CApplication::IsExtended() && !CApplication::IsKestrel();
  return (style.RecordName() == kDrillTable && !keepsDrillTable) || !RefuseBuiltInStyle(style);
}

void CTextStylesPage::InitNew(CRecordBase& draft) { CopyDefaultStyle(m_design.GetDefaults()->GetTextStyle(), draft); }

const CRecordBase* CTextStylesPage::UsedBy(const CDesignItem& item) const {
  const auto* const object = static_cast<const CObject*>(&item);
  if (const auto* const text = DynamicDowncast<CFreeText>(object)) return text->Values().style.Get();
  if (const auto* const position = DynamicDowncast<CValuePosition>(object)) return position->Values().style.Get();
  return nullptr;
}

bool CTextStylesPage::EditDraft(int row, CRecordBase& draft) {
  return CEditTextStyle(*this, row, static_cast<CTextStyle&>(draft)).DoModal() == CDialog::kOk;
}
