#include "technology/styles/unitsdialog.h"

#include <algorithm>

#include "model/services/evt.h"

namespace {
/// Offers every unit, with `type` chosen.
void FillUnitCombo(CComboBox& combo, int type) {
  CComboItems items;
  for (const SChoice& choice : EUnitType::Choices()) items.push_back({choice.value, CUnits::GetString(choice.value)});
  combo.SetItems(std::move(items));
  combo.SetValue(type);
}
}  // namespace

CUnitsDialog::SUnits::SUnits(CUnits* ofDesign, const char* typeName, CTextId typeLabel, const char* precisionName,
                             CTextId precisionLabel)
    : units(ofDesign),
      type(typeName, typeLabel, EEditor::Choice),
      precision(precisionName, precisionLabel, 0, CUnits::kMaxUnitsPrecision),
      lastType(ofDesign->GetType()) {
  FillUnitCombo(type, lastType);
  precision.SetValue(ofDesign->GetPrecision());
  type.SetChangeHandler([this] { TypeChosen(); });
}

void CUnitsDialog::SUnits::TypeChosen() {
  const int chosen = static_cast<int>(type.GetValue());
  if (std::exchange(lastType, chosen) == chosen) return;
  precision.SetValue(DefaultPrecision(CDesign::DsuFromUserUnits(1.0, chosen)));
}

void CUnitsDialog::SUnits::Write() const {
  units->SetPrecision(precision.GetValue());
  units->SetType(static_cast<int>(type.GetValue()));
}

int CUnitsDialog::DefaultPrecision(int dsuPerUnit) {
  constexpr int kShownWithoutDecimals = 1000;  // design units in one unit
  int precision = 0;
  for (int rest = dsuPerUnit; rest > kShownWithoutDecimals; rest /= 10) ++precision;
  return std::min(precision, CUnits::kMaxUnitsPrecision);
}

CUnitsDialog::CUnitsDialog(CDesign* design)
    : CDialog(Text::Units),
      m_design(design),
      m_primary(design->GetUnits(), "PrimaryUnits", Text::PrimaryUnits, "PrimaryPrecision", Text::PrimaryDecimals),
      m_secondary(design->GetUnits2(), "SecondaryUnits", Text::SecondaryUnits, "SecondaryPrecision",
                  Text::SecondaryDecimals) {
  for (SUnits* one : {&m_primary, &m_secondary}) {
    AddField(one->type);
    AddField(one->precision);
  }
  AddCommand("Swap", [this] { Swap(); });
}

void CUnitsDialog::OnInitDialog() {
  constexpr int kHelp = 391;
  PushHelpContext(kHelp);
}

void CUnitsDialog::Swap() {
  const std::int64_t type = m_primary.type.GetValue();
  const int precision = m_primary.precision.GetValue();
  m_primary.type.SetValue(m_secondary.type.GetValue());
  m_primary.precision.SetValue(m_secondary.precision.GetValue());
  m_secondary.type.SetValue(type);
  m_secondary.precision.SetValue(precision);
  std::swap(m_primary.lastType, m_secondary.lastType);
}

void CUnitsDialog::OnOk() {
  m_primary.Write();
  m_secondary.Write();
  CEvt::Send("UnitsChanged", m_design);
  EndDialog(kOk);
}
