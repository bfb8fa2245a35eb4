// The calculator: a dialog that works out a number, on its own or as a length of a design.
#pragma once
#include "model/controls/dialog.h"
#include "model/controls/fields.h"
#include "model/design/design.h"

/// The text of a calculation.
class CCalcEdit : public CEdit {
  TECHSHEET_CLASS(CCalcEdit, CEdit)
  using CEdit::CEdit;
  bool IsNumber() const override { return true; }
};

/// Works out a number: digits, + - * / and parentheses. OK is refused while the text is no such calculation, or, where
/// the units are kept, one whose result is no length in them.
class CCalcDialog : public CDialog {
  TECHSHEET_CLASS(CCalcDialog, CDialog)
  CCalcDialog(CDesign* design, bool keepsUnits, double start);
  double GetResult() const { return m_result; }

 protected:
  void OnOk() override;

 private:
  CDesign* m_design;
  CCalcEdit m_expression{"Expression", Text::Calculation};
  double m_result = 0;
};

/// Works out such a text; false, with `result` untouched, when it is none or the result is not finite.
bool Calculate(std::string_view expression, double& result);
