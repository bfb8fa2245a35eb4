#include "technology/recordform.h"

#include <limits>
#include <map>

#include "model/controls/formatedit.h"

namespace {
/// Names of fields live as long as the program: forms hand them out as plain text.
const char* KeptName(const CString& name) {
  static std::map<CString, int> names;
  return names.try_emplace(name, 0).first->first.c_str();
}

std::unique_ptr<CFormField> MakeField(const CColumn& column) {
  const char* const name = KeptName(column.nameInForm.empty() ? FormName(*column.field) : column.nameInForm);
  switch (column.editor) {
    case EEditor::Length: {
      return std::make_unique<CFormatEdit>(name, column.header);
    }
    case EEditor::Integer:
      return std::make_unique<CIntegerEdit>(name, column.header, std::numeric_limits<int>::min(),
                                            std::numeric_limits<int>::max());
    case EEditor::Boolean: return std::make_unique<CCheckBox>(name, column.header);
    case EEditor::Choice:
    case EEditor::Object: return std::make_unique<CComboBox>(name, column.header, column.editor);
    case EEditor::Colour: return std::make_unique<CColourComboBox>(name, column.header);
    default: return std::make_unique<CEdit>(name, column.header);
  }
}
}  // namespace

CRecordForm::CRecordForm(CTextId caption, CRecordPage& page, int row, CRecordBase& draft)
    : CDialog(caption), m_page(page), m_row(row), m_draft(draft) {
  for (const CColumn& column : page.FormColumns(draft.Kind())) {
    if (!column.field) continue;
    m_entries.push_back({&column, MakeField(column)});
    CFormField& field = *m_entries.back().field;
    const std::size_t index = m_entries.size() - 1;
    field.SetChangeHandler([this, index] { Read(index); });
    AddField(field);
    if (auto* const combo = DynamicDowncast<CComboBox>(&field)) {
      SCell cell;
      column.Fill(cell, draft, *page.Design().GetUnits());
      combo->SetItems(column.Offered(page.Design(), cell.value));
    }
    if (IsReadOnly(column)) field.Enable(false);
  }
  ShowValues();
}

/// A record keeps what cannot be edited in it, whatever its draft holds by now.
bool CRecordForm::IsReadOnly(const CColumn& column) const {
  const CRecordBase* const record = m_row > 0 ? m_page.Grid().GetItemData(m_row) : nullptr;
  return column.readOnly && column.readOnly(record ? *record : m_draft);
}

void CRecordForm::ShowValues() {
  for (const SEntry& entry : m_entries) {
    const CColumn& column = *entry.column;
    SCell cell;
    column.Fill(cell, m_draft, *m_page.Design().GetUnits());
    CFormField* const field = entry.field.get();
    if (auto* const length = DynamicDowncast<CFormatEdit>(field)) {
      const bool isEmpty = column.empty && column.empty(m_draft);
      if (isEmpty || !length->IsModified() || length->GetOuterValue() != CValue())  // a text that does not parse stays
        length->SetValue(&m_page.Design(), static_cast<int>(cell.value));
    } else if (auto* const number = DynamicDowncast<CIntegerEdit>(field)) {
      number->SetValue(static_cast<int>(cell.value));
    } else if (auto* const check = DynamicDowncast<CCheckBox>(field)) {
      check->Check(cell.value != 0);
    } else if (auto* const combo = DynamicDowncast<CComboBox>(field)) {
      combo->SetValue(cell.value, cell.text);
    } else if (auto* const colour = DynamicDowncast<CColourComboBox>(field)) {
      colour->SetColour(CColour{static_cast<std::uint32_t>(cell.value)});
    } else {
      static_cast<CEdit*>(field)->SetText(cell.text);
    }
    if (column.labelInForm) field->SetLabel(column.labelInForm(m_draft));
    field->Show(!column.inForm || column.inForm(m_draft));
    if (IsReadOnly(column)) continue;
    field->Enable((!column.enabledAtFill || column.enabledAtFill(m_draft)) &&
                  (!column.empty || !column.empty(m_draft)));
  }
}

void CRecordForm::Read(std::size_t index) {
  const CColumn& column = *m_entries[index].column;
  const CFormField& field = *m_entries[index].field;
  const CValue value = field.GetOuterValue();
  std::int64_t number = 0;
  if (const auto* const combo = DynamicDowncast<CComboBox>(&field)) {
    number = combo->GetValue();
  } else if (const auto* const colour = DynamicDowncast<CColourComboBox>(&field)) {
    number = colour->GetColour().rgb;
  } else if (const auto* const checked = std::get_if<bool>(&value)) {
    number = *checked;
  } else if (const auto* const integer = std::get_if<std::int64_t>(&value)) {
    number = *integer;
  } else if (column.editor == EEditor::Length) {
    return;  // OK refuses it
  }
  const std::unique_ptr<CRecordBase> before = m_draft.Clone();
  column.Store(m_draft, number, field.GetText());
  m_page.Derive(*column.field, *before, m_draft);
  ShowValues();
}

bool CRecordForm::TakeLengths() {
  for (const SEntry& entry : m_entries) {
    const auto* const length = DynamicDowncast<CFormatEdit>(entry.field.get());
    bool ok = true;
    int dsu = 0;
    if (length && length->IsEnabled()) length->GetValue(dsu, &ok);
    if (ok) continue;
    entry.field->SetFocus();
    return false;
  }
  return true;
}

void CRecordForm::OnOk() {
  CAppError::SetLastError(0);
  m_page.m_failedField = nullptr;
  if (TakeLengths()) {
    if (m_page.CheckDraft(m_row, m_draft)) {
      EndDialog(kOk);
      return;
    }
    for (const SEntry& entry : m_entries)
      if (entry.column->field == m_page.m_failedField) entry.field->SetFocus();
  }
  CAppError::ReportLastError();
}
