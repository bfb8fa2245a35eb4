#include "ui/qt/sheetview.h"

#include <QShortcut>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTabBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/qt/userinterface.h"

namespace {
int ColumnsWidth(const CPanel& panel) {
  int widest = 0;
  for (const SNamedGrid& named : panel.Grids()) {
    int width = 0;
    for (int col = 0; col < named.grid->GetColumnCount(); ++col) width += named.grid->Column(col).width;
    widest = std::max(widest, width);
  }
  return widest;
}
}  // namespace

CSheetView::CSheetView(CQtUserInterface& ui, CPropertySheetPlus& sheet, QWidget* parent)
    : CDialogView(ui, sheet, parent), m_sheet(sheet), m_views(sheet.Pages().size(), nullptr) {}

CSheetView::~CSheetView() {
  for (CPropertyPagePlus* const page : m_sheet.Pages()) page->SetObserver(nullptr);
}

void CSheetView::MakeBody(QBoxLayout& column) {
  m_own = MakePanelView(m_sheet, this);
  m_own->setVisible(!m_own->IsEmpty());
  m_letters = m_own->Letters();
  column.addWidget(m_own);
  m_tabs = new QTabBar(this);
  m_tabs->setAccessibleName(QtText(Text::Pages));
  m_tabs->setExpanding(false);
  m_tabs->setElideMode(Qt::ElideNone);
  m_tabs->setUsesScrollButtons(true);
  for (auto* const scroll : m_tabs->findChildren<QToolButton*>()) scroll->setFocusPolicy(Qt::NoFocus);  // arrows do it
  for (const CPropertyPagePlus* page : m_sheet.Pages()) m_tabs->addTab(PlainText(ToQt(page->GetTitle())));
  m_stack = new QStackedWidget(this);
  column.addWidget(m_tabs);
  column.addWidget(m_stack, 1);
  connect(m_tabs, &QTabBar::currentChanged, this, [this](int index) { GoTo(index); });
  const auto steps = [this](const char* keys, int step) {
    new QShortcut(QKeySequence(QLatin1String(keys)), this, [this, step] { Step(step); });
  };
  steps("Ctrl+Tab", 1);
  steps("Ctrl+PgDown", 1);
  steps("Ctrl+Shift+Tab", -1);
  steps("Ctrl+PgUp", -1);
}

void CSheetView::Step(int step) {
  const int count = m_tabs->count();
  if (count > 0) m_tabs->setCurrentIndex((m_tabs->currentIndex() + step + count) % count);
}

void CSheetView::GoTo(int index) {
  const int active = static_cast<int>(m_sheet.GetActiveIndex());
  if (index == active || index < 0) return;
  if (!ActiveView().CommitEdits()) {
    const QSignalBlocker quiet(m_tabs);
    m_tabs->setCurrentIndex(active);
    return m_ui.Beep(-1);
  }
  m_sheet.SetPage(m_sheet.Pages()[static_cast<std::size_t>(index)]->GetRuntimeClass());
  Refresh();
  if (!m_tabs->hasFocus()) ActiveView().FocusFirst();
}

CPanelView& CSheetView::ActiveView() {
  const std::size_t index = m_sheet.GetActiveIndex();
  if (index >= m_views.size()) return *m_own;
  CPanelView*& view = m_views[index];
  if (!view) {
    CPropertyPagePlus& page = *m_sheet.Pages()[index];
    page.SetObserver(this);
    view = MakePanelView(page, this);
    m_stack->addWidget(view);
  }
  return *view;
}

void CSheetView::Refresh() {
  CPanelView& view = ActiveView();
  if (m_stack->currentWidget() != &view || m_stack->count() == 1) {
    m_stack->setCurrentWidget(&view);
    OrderTabs();
  }
  {
    const QSignalBlocker quiet(m_tabs);
    m_tabs->setCurrentIndex(static_cast<int>(m_sheet.GetActiveIndex()));
  }
  if (!m_own->IsEmpty()) m_own->Refresh();
  CDialogView::Refresh();
}

QString CSheetView::CancelText() const { return CommandText(m_sheet.IsCloseShown() ? "Close" : "Cancel"); }

bool CSheetView::MayClose(const char*) {
  if (!m_sheet.IsModified() && !ActiveView().HasChangedEdit()) return true;
  return m_ui.ShowMessage({Text::CloseUnapplied, {}, TextOf(Text::CloseUnapplied), EButtons::YesNo}) == EAnswer::Yes;
}

bool CSheetView::IsRefused(std::string_view command) const {
  return (command == "OK" || command == "Apply") && m_sheet.IsRefused();
}

CString CSheetView::Speaker() const {
  const CPropertyPagePlus* const page = m_sheet.GetSpeakingPage();
  return page ? page->GetTitle() : CString();
}

std::vector<QWidget*> CSheetView::InTabOrder() {
  std::vector<QWidget*> order = m_own->InTabOrder();
  order.push_back(m_tabs);
  for (QWidget* const one : ActiveView().InTabOrder()) order.push_back(one);
  return order;
}

/// As wide as the widest page wants to be, within what is still a window and no strip.
QSize CSheetView::UsualSize() {
  const QFontMetrics letters = fontMetrics();
  constexpr int kColumns = 140;
  constexpr int kLines = 32;
  constexpr int kMostWidth = 3;  // heights
  int width = letters.averageCharWidth() * kColumns;
  const CPanelView& shown = ActiveView();
  const int beside =
      sizeHint().width() - m_stack->sizeHint().width() + shown.WantedWidth() - ColumnsWidth(shown.Panel());
  for (const CPropertyPagePlus* const page : m_sheet.Pages()) width = std::max(width, ColumnsWidth(*page) + beside);
  const int height = letters.lineSpacing() * kLines;
  return {std::min(width, kMostWidth * height), height};
}
