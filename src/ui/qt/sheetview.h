// A sheet on the screen: a tab for each page, and the page that is active. The view of a page is made when the page is
// first shown.
#pragma once
#include "model/controls/sheet.h"
#include "ui/qt/dialogview.h"

class QStackedWidget;
class QTabBar;

class CSheetView : public CDialogView {
 public:
  CSheetView(CQtUserInterface& ui, CPropertySheetPlus& sheet, QWidget* parent);
  ~CSheetView() override;
  CString Speaker() const override;

 protected:
  void MakeBody(QBoxLayout& column) override;
  CPanelView& ActiveView() override;
  void Refresh() override;
  QString CancelText() const override;
  bool MayClose(const char* command) override;
  bool IsRefused(std::string_view command) const override;
  std::vector<QWidget*> InTabOrder() override;
  QSize UsualSize() override;
  CString SizeKey() const override { return m_sheet.GetSizeRegistryKey(); }

 private:
  void GoTo(int index);
  void Step(int step);
  CPropertySheetPlus& m_sheet;
  QTabBar* m_tabs = nullptr;
  QStackedWidget* m_stack = nullptr;
  CPanelView* m_own = nullptr;       // what the sheet has beside its pages, or null
  std::vector<CPanelView*> m_views;  // of the pages, null until one is shown
};
