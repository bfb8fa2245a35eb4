// The technology dialog: the one tabbed sheet in which a design's styles, layers, nets and rules are viewed and
// changed.
#pragma once
#include <memory>

#include "technology/techpage.h"

class CSizesDialog : public CPropertySheetPlus {
  TECHSHEET_CLASS(CSizesDialog, CPropertySheetPlus)
  /// `initialPage` is the page class that the dialog is opened for, or null; a reduced edition then has the pages that
  /// belong to it alone.
  CSizesDialog(CDesign* design, CTextId captionAndUndoId, const CRuntimeClass* initialPage);

  /// Shows the page that the reduced sheet last showed.
  void RestoreReducedPage();
  CDesign* GetDesign() const { return m_design; }

 protected:
  void OnCommand(const SCommand& command) override;
  void OnDestroy() override;

 private:
  CDesign* m_design;
  std::vector<std::unique_ptr<CTechDialogPage>> m_ownPages;
};
