#include "technology/styles/textstylespage.h"

#include <algorithm>

#include "model/base/textfault.h"
#include "model/services/application.h"
#include "technology/styles/stylerules.h"

namespace {
using F = STextStyleFields;
constexpr const char* kDrillTable = "[Drill Table]";

std::int64_t FontValue(const CRecordBase& values) {
  return reinterpret_cast<std::int64_t>(CTypeFontList::Find(FieldsOf<CTextStyle>(values).font));
}
bool IsStroked(const CRecordBase& values) { return FontValue(values) == 0; }
bool IsBarcode(const CRecordBase& values) { return static_cast<const CTextStyle&>(values).IsBarcodeFont(); }
bool HasNoFont(const CRecordBase& values) {
  const CString& font = FieldsOf<CTextStyle>(values).font;
  return font.empty() || HasControlCharacters(font);
}

/// Of a bar code: in the form and in files alone.
CColumn ParameterColumn(int F::* parameter) { return Column(parameter).NotInGrid().InFormWhen(IsBarcode); }
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
    : CRecordPage(design, design.textStyles,
                  {.title = Text::TextStyles,
                   .settings = "Settings\\Styles\\Text",
                   .nameError = Text::StyleNameInvalid,
                   .inUse = Text::InUse,
                   .builtInStays = Text::BuiltIn,
                   .exportName = Text::TextStylesFile,
                   .validName = &ValidTextStyleName,
                   .builtIn = EBuiltIn::NameLocked,
                   .nameErrorHasRow = false,
                   .layoutBeforeWriting = true,
                   .styles = true,
                   .reportsLines = true,
                   .redraws = true}) {
  Columns({
      UsedMark(),
      Column(&F::name).Width(160),
      Column(&F::size).CalledInForm("Size").ImportError(Text::RecordLengthInvalid),
      Column(&F::lineWidth).ImportError(Text::RecordLengthInvalid),
      Column(&F::font)
          .ChosenFrom(&CFontComboBox::Fill, FontValue)
          .RefusedFromFileWhen(HasNoFont, Text::FontNameInvalid)
          .Width(140),
      Column(&F::underlined),
      ParameterColumn(&F::parameter1),
      ParameterColumn(&F::parameter2),
      ParameterColumn(&F::parameter3),
      ParameterColumn(&F::parameter4),
      ParameterColumn(&F::parameter5),
      ParameterColumn(&F::parameter6),
      Group(CApplication::IsExtended())  // without meaning for a TrueType font
          .AlwaysInFile()
          .Of({Column(&F::proportional).EnabledWhen(IsStroked), Column(&F::charWidthPercent).EnabledWhen(IsStroked),
               Column(&F::interlineHeightPercent).EnabledWhen(IsStroked)}),
  });
  std::vector<CColumn> form = Rows().Kinds().At(0).form;  // what bar codes alone have comes last
  std::ranges::stable_partition(form, [](const CColumn& column) { return !column.formTest; });
  Rows().Kinds().SetForm(CTextStyle::TheKind(), std::move(form));
  AddForm(RecordForm<CEditTextStyle>(Text::TextStyle));
}

void CTextStylesPage::OnInitDialog() {
  CTypeFontList::Load();
  CRecordPage::OnInitDialog();
}

void CTextStylesPage::CheckValues(const SCheckedRow& row, CFindings& findings) const {
  const F& style = row.As<CTextStyle>().Values();
  if (!IsValidDimension(style.size.value, &m_design)) findings.AddLastError(row, &F::size);
  if (!IsValidDimension(style.lineWidth.value, &m_design)) findings.AddLastError(row, &F::lineWidth);
}

/// One of the built-in styles stays in the editions alone that make drill tables with it.
void CTextStylesPage::CheckDeletion(const SCheckedRow& row, CFindings& findings) const {
  const CRecordBase& known = row.record ? *row.record : row.values;
  const CString& name = known.RecordName();
  const bool keepsDrillTable = CApplication::IsExtended() && !CApplication::IsKestrel();
  if (row.record && IsInUse(*row.record)) {
    findings.Refuse(row, Rows().Options().inUse, row.values.RecordName());
  } else if (known.IsBuiltIn() && (name != kDrillTable || keepsDrillTable)) {
    findings.Refuse(row, Rows().Options().builtInStays, name);
  }
}

void CTextStylesPage::InitNew(CRecordBase& draft) const {
  CopyDefaultStyle(m_design.GetDefaults()->GetTextStyle(), draft);
}

const CRecordBase* CTextStylesPage::UsedBy(const CDesignItem& item) const {
  const auto* const object = static_cast<const CObject*>(&item);
  if (const auto* const text = DynamicDowncast<CFreeText>(object)) return text->Values().style.Get();
  if (const auto* const position = DynamicDowncast<CValuePosition>(object)) return position->Values().style.Get();
  return nullptr;
}
