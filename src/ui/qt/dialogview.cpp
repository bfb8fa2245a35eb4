#include "ui/qt/dialogview.h"

#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScreen>
#include <QShortcut>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

#include "model/services/registry.h"
#include "ui/qt/gridview.h"
#include "ui/qt/sheetview.h"
#include "ui/qt/userinterface.h"

QRect FitWithin(QRect wanted, const QRect& screen) {
  wanted.setSize(wanted.size().boundedTo(screen.size()));
  wanted.moveLeft(std::clamp(wanted.left(), screen.left(), screen.right() - wanted.width() + 1));
  wanted.moveTop(std::clamp(wanted.top(), screen.top(), screen.bottom() - wanted.height() + 1));
  return wanted;
}

std::unique_ptr<CDialogView> CDialogView::Make(CQtUserInterface& ui, CDialog& dialog, QWidget* parent) {
  std::unique_ptr<CDialogView> view;
  if (auto* const sheet = DynamicDowncast<CPropertySheetPlus>(&dialog)) {
    view.reset(new CSheetView(ui, *sheet, parent));
  } else {
    view.reset(new CDialogView(ui, dialog, parent));
  }
  view->Build();
  return view;
}

CDialogView::CDialogView(CQtUserInterface& ui, CDialog& dialog, QWidget* parent)
    : QDialog(parent), m_ui(ui), m_dialog(dialog) {
  setWindowTitle(PlainText(ToQt(dialog.GetTitle())));
  setSizeGripEnabled(true);
  dialog.SetObserver(this);
  m_refresh.setSingleShot(true);
  connect(&m_refresh, &QTimer::timeout, this, [this] {
    if (!m_pressing) Refresh();
  });
}

CDialogView::~CDialogView() { m_dialog.SetObserver(nullptr); }

void CDialogView::Build() {
  auto* const column = new QVBoxLayout(this);
  for (const char* command : {"OK", "Cancel", "Apply"}) m_letters.Assign(CommandText(command));
  MakeBody(*column);
  MakeButtons(*column);
  OrderTabs();
  new QShortcut(QKeySequence::HelpContents, this, [this] {
    if (m_ui.onHelp) m_ui.onHelp(m_dialog);
  });
  Refresh();
}

void CDialogView::MakeBody(QBoxLayout& column) {
  m_view = MakePanelView(m_dialog, this);
  column.addWidget(m_view, 1);
}

CPanelView* CDialogView::MakePanelView(CPanel& panel, QWidget* parent) {
  const auto press = [this](const char* command) { Press(command); };
  const auto entered = [this] {
    if (!m_pressing) Refresh();
  };
  return new CPanelView(panel, m_letters, {press, entered}, parent);
}

/// The box of the buttons would lead from wherever it stands among all that to its first button.
void CDialogView::OrderTabs() {
  m_buttons.front().second->parentWidget()->setFocusProxy(nullptr);
  std::vector<QWidget*> order = InTabOrder();
  for (const auto& [name, button] : m_buttons) order.push_back(button);
  for (std::size_t at = 1; at < order.size(); ++at) setTabOrder(order[at - 1], order[at]);
}

void CDialogView::MakeButtons(QBoxLayout& column) {
  auto* const box = new QDialogButtonBox(this);
  const auto add = [&](const char* command, QDialogButtonBox::ButtonRole role) {
    if (!m_dialog.FindCommand(command)) return;
    QPushButton* const button = box->addButton(CommandText(command), role);
    connect(button, &QPushButton::clicked, this, [this, command] { Press(command); });
    m_buttons.emplace_back(command, button);
  };
  add("OK", QDialogButtonBox::AcceptRole);
  add("Cancel", QDialogButtonBox::RejectRole);
  add("Apply", QDialogButtonBox::ApplyRole);
  m_buttons.front().second->setDefault(true);
  column.addWidget(box);
}

void CDialogView::Refresh() {
  m_refresh.stop();
  for (const auto& [name, button] : m_buttons) {
    const SCommand* const command = m_dialog.FindCommand(name);
    button->setVisible(command->visible);
    // What is still being typed can be applied: it is taken over first.
    const bool hasEdit = std::string_view(name) == "Apply" && ActiveView().HasChangedEdit();
    const bool isEnabled = command->IsEnabled() || hasEdit;
    if (!isEnabled && button->hasFocus()) ActiveView().FocusFirst();  // back to work
    button->setEnabled(isEnabled);
    const QString text = std::string_view(name) == "Cancel" ? CancelText() : CommandText(name);
    if (button->text() != text) button->setText(text);
    button->setAccessibleName(PlainText(text));
  }
  ActiveView().Refresh();
}

void CDialogView::PanelChanged(CPanel&) { m_refresh.start(0); }

void CDialogView::Press(const char* command) {
  if (m_pressing || !m_dialog.IsOpen()) return;
  const bool cancels = std::string_view(command) == "Cancel";
  if (!ActiveView().CommitEdits() && !cancels) return m_ui.Beep(-1);
  if (cancels && !MayClose(command)) return;
  ActiveView().ClearProblem();
  m_ui.ForgetReason();
  const int rows = ActiveView().RowCount();
  {
    const QScopedValueRollback<bool> pressing(m_pressing, true);  // also when memory runs out
    CString why;
    if (!m_dialog.Press(command, why)) m_ui.Beep(-1);  // it is disabled or hidden, and its button shows that
  }
  if (!m_dialog.IsOpen()) {
    KeepPlace();
    done(Accepted);
    return;
  }
  if (std::string_view(command) == "Apply" && m_ui.onApplied) m_ui.onApplied(m_dialog);
  Refresh();
  const QString reason = m_ui.Reason();
  if (IsRefused(command) && !reason.isEmpty()) {
    ActiveView().ShowProblem(reason);
  } else if (const SCommand* const add = m_dialog.ActivePanel().FindCommand("Add");
             add && !add->asks && add->name == std::string_view(command) && ActiveView().RowCount() > rows) {
    ActiveView().EditFocusCell();  // what a form has been filled in for is complete
  }
}

void CDialogView::reject() { Press("Cancel"); }

void CDialogView::keyPressEvent(QKeyEvent* event) {
  const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  for (const QWidget* widget = focusWidget(); isReturn && widget; widget = widget->parentWidget())
    if (dynamic_cast<const CGridView*>(widget)) return event->accept();  // in a grid it is for cells
  QDialog::keyPressEvent(event);
}

// ---- Size and position

namespace {
constexpr const char* kSize = "Size";
constexpr const char* kPosition = "Position";
constexpr int kLeastSide = 100;  // pixels; smaller ones were never kept
}  // namespace

/// The place is that of the frame, which counts only for a window that the window system does not know yet.
void CDialogView::setVisible(bool visible) {
  if (visible && !testAttribute(Qt::WA_WState_Created)) {
    ensurePolished();
    Place();
  }
  QDialog::setVisible(visible);
}

void CDialogView::showEvent(QShowEvent* event) {
  if (!event->spontaneous()) ActiveView().FocusFirst();
  QDialog::showEvent(event);
}

void CDialogView::Place() {
  const QWidget* const owner = parentWidget() ? parentWidget()->window() : nullptr;
  // A window narrower than its title would cut it, which is bold and has the program's name behind it; the frame has an
  // icon and buttons too.
  constexpr int kBesideTitle = 10;  // times the height of the title
  QFont bold = font();
  bold.setBold(true);
  const QFontMetrics letters(bold);
  const int title = letters.horizontalAdvance(windowTitle() + QGuiApplication::applicationDisplayName());
  QSize size = UsualSize().expandedTo({title + kBesideTitle * letters.height(), 0});
  const QRect usual = owner ? owner->frameGeometry() : screen()->availableGeometry();
  CPoint kept;
  const CAppRegistry registry(SizeKey());
  if (!SizeKey().empty() && registry.GetValue(kSize, kept) && kept.x >= kLeastSide && kept.y >= kLeastSide)
    size = {kept.x, kept.y};
  QRect place({}, size);
  place.moveCenter(usual.center());
  if (!SizeKey().empty() && registry.GetValue(kPosition, kept)) place.moveTopLeft({kept.x, kept.y});
  const QScreen* const where = QGuiApplication::screenAt(place.center());
  const int edge = style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth);
  const int top = style()->pixelMetric(QStyle::PM_TitleBarHeight);
  const QRect room = (where ? where : screen())->availableGeometry();  // the frame has to lie in it too
  place = FitWithin(place, room.adjusted(0, 0, -2 * edge, -top - edge));
  resize(place.size());
  move(place.topLeft());
}

void CDialogView::KeepPlace() const {
  if (SizeKey().empty()) return;
  CAppRegistry registry(SizeKey());
  registry.SetValue(kSize, CPoint{width(), height()});
  registry.SetValue(kPosition, CPoint{x(), y()});
}
