// The Merge dialog: which of several styles survives, and what moves to it.
#pragma once
#include "model/controls/dialog.h"

class CMergeStyles : public CDialog {
  TECHSHEET_CLASS(CMergeStyles, CDialog)

  struct SStyle {
    CString name;
    CRecordBase* record;  // null: not in the design yet, so it cannot survive
    int uses;
    bool isBuiltIn;  // cannot be merged away
  };
  /// At least one of the styles is in the design; the survivor is `proposed` where that is one of those.
  CMergeStyles(std::vector<SStyle> styles, const CRecordBase* proposed);

  CRecordBase& Survivor() const;
  /// Whether the style goes when the dialog closes with OK.
  bool Goes(const SStyle& style) const { return !style.isBuiltIn && (!style.record || style.record != &Survivor()); }

 private:
  void ShowMoves();

  std::vector<SStyle> m_styles;
  CComboBox m_survivor{"Survivor", Text::Keep, EEditor::Object};
  SListBox m_moves{"moves", {}, {}, {}};
};
