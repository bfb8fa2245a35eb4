#include "technology/recordform.h"

#include <limits>
#include <map>

#include "model/controls/formatedit.h"
#include "model/design/fieldtext.h"
#include "technology/techpage.h"

namespace {
/// Names of fields live as long as the program: forms hand them out as plain text.
const char* KeptName(const CString& name) {
  static std::map<CString, int> names;
  return names.try_emplace(name, 0).first->first.c_str();
}

std::unique_ptr<CFormField> MakeField(const CColumn& column) {
  const char* const name = KeptName(column.formName.empty() ? FormName(*column.field) : column.formName);
  const CTextId label = column.Header();
  switch (column.editor) {
    case EEditor::Length: return std::make_unique<CFormatEdit>(name, label);
    case EEditor::Integer:
      return std::make_unique<CIntegerEdit>(name, label, std::numeric_limits<int>::min(),
                                            std::numeric_limits<int>::max());
    case EEditor::Boolean: return std::make_unique<CCheckBox>(name, label);
    case EEditor::Choice:
    case EEditor::Object: return std::make_unique<CComboBox>(name, label, column.editor);
    case EEditor::Colour: return std::make_unique<CColourComboBox>(name, label);
    default: return std::make_unique<CEdit>(name, label);
  }
}
}  // namespace

CRecordForm::CRecordForm(const SRecordForm& form, const SRecordForm::SDraft& draft)
    : CDialog(form.caption), m_form(form), m_of(draft), m_before(draft.draft.Clone()) {
  if (m_of.row > 0) m_answers = m_of.rows.Grid().Row(m_of.row).answers;
  const CDesign& design = m_of.rows.Page().Design();
  for (const CColumn& column : m_of.rows.Kinds().Of(m_of.draft.Kind()).form) {
    m_entries.push_back({&column, MakeField(column)});
    CFormField& field = *m_entries.back().field;
    const std::size_t index = m_entries.size() - 1;
    field.SetChangeHandler([this, index] { Read(index); });
    AddField(field);
    if (auto* const combo = DynamicDowncast<CComboBox>(&field)) {
      SCell cell;
      column.Fill(cell, m_of.draft, Units());
      combo->SetItems(column.Offered(design, cell.value));
    }
    if (IsReadOnly(column)) field.Enable(false);
  }
  ShowValues();
}

const CUnits& CRecordForm::Units() const { return *m_of.rows.Page().Design().GetUnits(); }

CPreview CRecordForm::GetPreview() const {
  CPreview preview = m_form.preview ? m_form.preview(m_of.draft) : CPreview();
  if (auto* const pad = std::get_if<SPadPreview>(&preview)) {
    pad->unitType = Units().GetType();
    pad->precision = Units().GetPrecision();
  }
  return preview;
}

/// A record keeps what cannot be edited in it, whatever its draft holds by now.
bool CRecordForm::IsReadOnly(const CColumn& column) const {
  const CRecordBase* const record = m_of.row > 0 ? m_of.rows.Grid().GetItemData(m_of.row) : nullptr;
  return m_of.rows.IsReadOnly(column, record ? *record : m_of.draft);
}

void CRecordForm::ShowValues() {
  const CRecordBase& draft = m_of.draft;
  for (const SEntry& entry : m_entries) {
    const CColumn& column = *entry.column;
    SCell cell;
    column.Fill(cell, draft, Units());
    CFormField* const field = entry.field.get();
    if (auto* const length = DynamicDowncast<CFormatEdit>(field)) {
      const bool isEmpty = column.empty && column.empty(draft);
      if (isEmpty || !length->IsModified() || length->GetOuterValue() != CValue())  // a text that does not parse stays
        length->SetValue(&m_of.rows.Page().Design(), static_cast<int>(cell.value));
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
    if (column.formLabel) field->SetLabel(column.formLabel(draft));
    field->Show(!column.formTest || column.formTest(draft));
    if (!IsReadOnly(column))
      field->Enable((!column.enabledAtFill || column.enabledAtFill(draft)) && (!column.empty || !column.empty(draft)));
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
  const std::unique_ptr<CRecordBase> before = m_of.draft.Clone();
  StoreField(*column.field, m_of.draft, number, field.GetText());
  m_of.rows.Rules().Follow(*column.field, *before, m_of.draft);
  std::erase_if(m_answers, [&](const SAnswer& answer) { return !answer.field->HasEqual(*before, m_of.draft); });
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
  CAppError::SetLastError(CTextId());
  if (!TakeLengths()) return CAppError::ReportLastError();
  const std::unique_ptr<CRecordBase> settled = m_of.draft.Clone();
  if (m_of.rows.Options().settled != ESettled::None) m_of.rows.Rules().Settle(*settled);
  const CFindings findings = m_of.rows.JudgeDraft(m_of.rows.Checked(m_of.row, *settled, m_of.ownerRow));
  const auto answersOf = [this](const SFinding& question) { return question.field ? &m_answers : nullptr; };
  if (const SFinding* const refused = CTechDialogPage::Accept(findings, answersOf)) {
    for (const SEntry& entry : m_entries)
      if (entry.column->field == refused->field) entry.field->SetFocus();
    return CTechDialogPage::Report(*refused);
  }
  if (m_form.handBack) m_form.handBack(m_of.draft);
  if (m_form.announce) m_form.announce(*m_before, m_of.draft);
  EndDialog(kOk);
}
