// The base of the grid pages of the technology dialog: a grid, the units of its lengths, and a calculator.
#pragma once
#include "model/controls/formatedit.h"
#include "model/controls/sheet.h"
#include "model/design/design.h"
#include "model/services/evt.h"

class CTechDialogPage : public CPropertyPagePlus, public CGridOwner {
  TECHSHEET_CLASS(CTechDialogPage, CPropertyPagePlus)
  /// `settings` is the key under which the layout of the grid is kept.
  CTechDialogPage(CDesign& design, CTextId title, const CString& settings);

  CDesign& Design() const { return m_design; }
  CEditGrid& Grid() { return m_grid; }
  const CEditGrid& Grid() const { return m_grid; }
  void OnSetActive() override;

  CComboItems CellItems(int, int) const override { return {}; }
  bool CellEntered(int, int, const SInput&, const SComboItem*, CString&) override { return false; }
  void CellChanged(int, int) override { SetModified(); }
  CString CellCopy(const SCell& cell) const override;
  CString CellHint(const SCell& cell) const override;

 protected:
  /// Reads a length typed into a cell: a plain number in the page's units in the editions that want one, otherwise with
  /// any unit behind it. False, with `dsu` untouched and the last error set, when it does not parse.
  bool ParseLength(const CString& text, int& dsu) const;
  /// Edits a cell as a person does; the way by which commands of the page change a cell.
  bool EditCell(int row, int col, const SInput& input);
  /// Whether the focus cell is a length that can be edited.
  bool IsLengthFocused() const;
  /// Opens the calculator on the focus cell.
  void OnCalculator();
  /// The units of the design may have changed: when they did, shows every length anew from its exact value.
  virtual void OnUnitsChanged();
  const CUnits& UserUnits() const { return m_units; }

  CDesign& m_design;
  CEditGrid m_grid;

 private:
  CUnits m_units;   // lengths are shown and typed in these
  CUnits m_units2;  // and these stand beside them
  CEvt::CSubscription m_subscription;
};
