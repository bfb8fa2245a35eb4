#include "ui/qt/panelview.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <algorithm>

#include "ui/qt/fieldview.h"
#include "ui/qt/gridview.h"
#include "ui/qt/listview.h"
#include "ui/qt/previewview.h"
#include "ui/qt/problemline.h"

namespace {
/// Scrolls up and down alone, and would like to show all of it.
class CScrolled final : public QScrollArea {
 public:
  CScrolled(QWidget* content, QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    setWidget(content);
  }
  QSize sizeHint() const override { return widget()->sizeHint(); }
  QSize minimumSizeHint() const override {
    return {widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width(), fontMetrics().height() * 4};
  }
};

bool IsOfTheWindow(std::string_view command) {
  return command == "OK" || command == "Cancel" || command == "Apply" || command == "ContextMenu";
}
}  // namespace

CPanelView::CPanelView(CPanel& panel, CMnemonics letters, SActions actions, QWidget* parent)
    : QWidget(parent),
      m_panel(panel),
      m_letters(std::move(letters)),
      m_actions(std::move(actions)),
      m_split(new QSplitter(Qt::Horizontal, this)),
      m_body(new QWidget(m_split)),
      m_preview(new CPreviewView(m_split)) {
  for (const SCommand& command : m_panel.Commands())  // they keep their letters, labels take what is left
    if (!IsOfTheWindow(command.name))
      m_buttons.push_back({command.name, m_letters.Assign(CommandText(command.name)), nullptr});
  m_split->setChildrenCollapsible(false);
  connect(m_split, &QSplitter::splitterMoved, this, [this] { m_isSplitByPerson = true; });
  auto* const row = new QHBoxLayout(m_body);
  row->setContentsMargins(0, 0, 0, 0);
  auto* const column = new QVBoxLayout;
  row->addLayout(column, 1);
  if (!m_panel.Fields().empty()) {
    column->addWidget(MakeForm());
    m_formProblem = new CProblemLine(this);
    column->addWidget(m_formProblem);
  }
  AddGrids(*column);
  AddLists(*column);
  if (!m_buttons.empty() && !HasTwoLists()) row->addWidget(MakeButtons());
  m_split->setStretchFactor(0, m_grids.empty() ? 0 : 2);
  m_split->setStretchFactor(1, 1);
  auto* const whole = new QVBoxLayout(this);
  whole->setContentsMargins(0, 0, 0, 0);
  whole->addWidget(m_split);
  Refresh();
}

// ---- Room

int CPanelView::BodyWidth() const {
  int width = 0;
  for (const SGridBlock& block : m_grids) width = std::max(width, block.view->WantedWidth());
  if (m_buttons.empty() || m_grids.empty()) return std::max(width, m_body->sizeHint().width());
  const QWidget* const buttons = m_buttons.front().button->parentWidget();
  return width + m_body->layout()->spacing() + buttons->minimumSizeHint().width() +
         style()->pixelMetric(QStyle::PM_ScrollBarExtent);
}

int CPanelView::WantedWidth() const {
  const bool isDrawn = !m_preview->isHidden();
  return BodyWidth() + (isDrawn ? m_split->handleWidth() + m_preview->sizeHint().width() : 0);
}

/// Until a person divides it, what is drawn gets a third, or what the columns of the grids leave of that.
void CPanelView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (m_grids.empty() || m_isSplitByPerson || m_preview->isHidden()) return;
  const int room = m_split->width() - m_split->handleWidth();
  const int drawn = std::max(m_preview->minimumSizeHint().width(), std::min(room / 3, room - BodyWidth()));
  m_split->setSizes({room - drawn, drawn});
}

namespace {
/// None of what stands around them hands the keyboard on: Tab would come back to where it is handed.
void AddFocusable(QWidget& around, std::vector<QWidget*>& order) {
  for (auto* const one : around.findChildren<QWidget*>())
    if ((one->focusPolicy() & Qt::TabFocus) != 0) order.push_back(one);
}
}  // namespace

std::vector<QWidget*> CPanelView::InTabOrder() const {
  std::vector<QWidget*> order;
  for (const SFieldRow& row : m_fields) order.push_back(&row.view->Editor());
  for (const SGridBlock& block : m_grids) AddFocusable(*block.view, order);
  if (!m_lists.empty()) AddFocusable(*m_lists.front(), order);
  for (const SButton& one : m_buttons) order.push_back(one.button);
  for (std::size_t at = 1; at < m_lists.size(); ++at) AddFocusable(*m_lists[at], order);
  AddFocusable(*m_preview, order);
  return order;
}

QWidget* CPanelView::MakeForm() {
  auto* const content = new QWidget;
  m_form = new QFormLayout(content);
  m_form->setContentsMargins(0, 0, 0, 0);
  m_form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
  for (CFormField* const field : m_panel.Fields()) {
    CFieldView* const view = MakeFieldView(*field, content, [this, field] { Entered(*field); });
    QLabel* label = nullptr;
    if (view->HasOwnLabel()) {
      m_form->addRow(QString(), view);
    } else {
      label = new QLabel(content);
      label->setBuddy(&view->Editor());
      m_form->addRow(label, view);
    }
    m_fields.push_back({view, label});
    ShowLabel(m_fields.back());
  }
  return new CScrolled(content, this);
}

/// What was said of a field holds until it is entered.
void CPanelView::Entered(const CFormField& field) {
  if (!m_atFault || m_atFault == &field) m_formProblem->Clear();
  m_actions.entered();
}

/// A label may change with what the field stands for; its letter goes with it.
void CPanelView::ShowLabel(SFieldRow& row) {
  const CTextId id = row.view->Field().Label();
  if (std::exchange(row.id, id) == id) return;
  m_letters.Release(row.text);
  row.text = m_letters.Assign(ToQt(TextOf(id)));
  row.view->SetLabel(row.text);
  if (row.label) row.label->setText(row.text);
}

QWidget* CPanelView::MakeButtons() {
  auto* const content = new QWidget;
  auto* const column = new QVBoxLayout(content);
  column->setContentsMargins(0, 0, 0, 0);
  for (SButton& one : m_buttons) {
    one.button = new QPushButton(one.text, content);
    one.button->setAccessibleName(PlainText(one.text));
    connect(one.button, &QPushButton::clicked, this, [this, command = one.command] { m_actions.press(command); });
    column->addWidget(one.button);
  }
  column->addStretch(1);
  if (HasTwoLists()) column->insertStretch(0, 1);
  auto* const scrolled = new CScrolled(content, this);
  scrolled->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
  return scrolled;
}

void CPanelView::AddGrids(QBoxLayout& column) {
  for (const SNamedGrid& named : m_panel.Grids()) {
    auto* const view = new CGridView(m_panel, *named.grid, this);
    view->onCommand = [this](const char* command) { m_actions.press(command); };
    view->onChanged = view->onEdited = [this, view] {
      const QScopedValueRollback<const CGridView*> upToDate(m_upToDate, view);
      m_actions.entered();
    };
    view->onMoved = [this] { RefreshBeside(); };
    column.addWidget(view, 1);
    m_grids.push_back({named.grid, view});
  }
}

void CPanelView::AddLists(QBoxLayout& column) {
  if (m_panel.Lists().empty()) return;
  auto* const row = new QHBoxLayout;
  for (SListBox* const list : m_panel.Lists()) {
    if (m_lists.size() == 1 && HasTwoLists() && !m_buttons.empty()) row->addWidget(MakeButtons());  // between them
    auto* const view = new CListView(*list, m_letters.Assign(ControlText(list->name)), this, m_actions.entered);
    row->addWidget(view, 1);
    m_lists.push_back(view);
  }
  column.addLayout(row, 1);
}

bool CPanelView::IsEmpty() const { return m_fields.empty() && m_grids.empty() && m_lists.empty() && m_buttons.empty(); }

bool CPanelView::CommitEdits() {
  for (const SFieldRow& row : m_fields) row.view->Commit();
  return std::all_of(m_grids.begin(), m_grids.end(), [](const SGridBlock& block) { return block.view->CommitEdit(); });
}

bool CPanelView::HasChangedEdit() const {
  return std::any_of(m_grids.begin(), m_grids.end(),
                     [](const SGridBlock& block) { return block.view->HasChangedEdit(); });
}

void CPanelView::Refresh() {
  for (SFieldRow& row : m_fields) {
    ShowLabel(row);
    m_form->setRowVisible(row.view, row.view->Field().IsVisible());
    row.view->Refresh();
  }
  for (const SGridBlock& block : m_grids)
    if (block.view != m_upToDate) block.view->Refresh();
  for (CListView* const list : m_lists) list->Refresh();
  RefreshBeside();
}

void CPanelView::RefreshBeside() {
  for (const SButton& one : m_buttons) {
    const SCommand* const command = m_panel.FindCommand(one.command);
    one.button->setVisible(command && command->visible);
    one.button->setEnabled(command && command->IsEnabled());
  }
  m_preview->SetPreview(m_panel.GetPreview());
}

CPanelView::SGridBlock* CPanelView::FocusGrid() {
  const auto at = std::find_if(m_grids.begin(), m_grids.end(), [](const SGridBlock& block) {
    const SGridPlace place = block.grid->GetFocusCell();
    return block.grid->IsValid(place.row, place.col) && block.grid->IsPresent(place.row);
  });
  return at == m_grids.end() ? nullptr : &*at;
}

void CPanelView::ShowProblem(const QString& reason) {
  ClearProblem();
  const CFormField* const field = m_panel.FocusField();
  for (const SFieldRow& row : m_fields) {
    if (&row.view->Field() != field) continue;
    row.view->ShowProblem(reason);
    row.view->Editor().setFocus(Qt::OtherFocusReason);
    if (auto* const edit = qobject_cast<QLineEdit*>(&row.view->Editor())) edit->selectAll();
  }
  if (SGridBlock* const block = FocusGrid()) {
    const SGridPlace place = block->grid->GetFocusCell();
    block->view->ShowProblem(place.row, place.col, reason);
    block->view->EditCell(place.row, place.col);
  } else if (m_formProblem) {
    m_atFault = field;
    m_formProblem->Show(reason);
  }
}

void CPanelView::ClearProblem() {
  for (const SFieldRow& row : m_fields) row.view->ShowProblem({});
  if (m_formProblem) m_formProblem->Clear();
  for (const SGridBlock& block : m_grids) block.view->ClearProblem();
}

void CPanelView::EditFocusCell() {
  const SGridBlock* const block = FocusGrid();
  if (block) block->view->EditCell(block->grid->GetFocusCell().row, block->grid->GetFocusCell().col);
}

int CPanelView::RowCount() const {
  int rows = 0;
  for (const SGridBlock& block : m_grids) rows += block.grid->PresentRows();
  return rows;
}

void CPanelView::FocusFirst() {
  if (!m_grids.empty() && m_fields.empty()) {
    m_grids.front().view->Table().setFocus(Qt::OtherFocusReason);
    return;
  }
  for (const SFieldRow& row : m_fields) {
    if (!row.view->Editor().isEnabled() || !row.view->Field().IsVisible()) continue;
    row.view->Editor().setFocus(Qt::TabFocusReason);
    return;
  }
  if (!m_lists.empty()) InTabOrder().front()->setFocus(Qt::OtherFocusReason);
}
