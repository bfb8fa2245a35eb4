#include "ui/qt/technologyview.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include "model/controls/preview.h"
#include "model/design/design.h"
#include "ui/qt/recordmodel.h"
#include "ui/qt/stackview.h"
#include "ui/qt/text.h"

namespace {
constexpr int kNodeRole = Qt::UserRole;      // its place among the nodes
constexpr int kNameRole = Qt::UserRole + 1;  // as files name it
constexpr int kWidestColumn = 260;           // pixels, until the person chooses another width
}  // namespace

CTechnologyView::CTechnologyView(CTechnology& technology, QWidget* parent)
    : QSplitter(Qt::Vertical, parent),
      m_technology(technology),
      m_tree(new QTreeWidget),
      m_table(new QTableView),
      m_model(new CRecordModel(technology, this)),
      m_stack(new CStackView) {
  m_tree->setAccessibleName(QtText(Text::Collections));
  m_tree->setColumnCount(2);
  m_tree->setHeaderLabels({QtText(Text::Collections), QtText(Text::Count)});
  m_tree->header()->setStretchLastSection(false);
  m_tree->header()->setSectionResizeMode(0, QHeaderView::Stretch);
  m_tree->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
  m_table->setModel(m_model);
  m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
  m_table->setAlternatingRowColors(true);
  m_table->setWordWrap(false);
  m_table->setTabKeyNavigation(false);
  m_table->horizontalHeader()->setHighlightSections(false);
  m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 6);
  auto* const upper = new QSplitter(Qt::Horizontal);
  upper->addWidget(m_tree);
  upper->addWidget(m_table);
  upper->setStretchFactor(0, 1);
  upper->setStretchFactor(1, 2);
  addWidget(upper);
  addWidget(m_stack);
  setStretchFactor(0, 3);
  setStretchFactor(1, 2);
  setChildrenCollapsible(false);
  connect(m_tree, &QTreeWidget::currentItemChanged, this, &CTechnologyView::ShowChosen);
  Refresh();
  if (!Choose("layers")) Choose("netClasses");
}

// ---- The tree

QTreeWidgetItem* CTechnologyView::AddNode(QTreeWidgetItem* parent, SNode node, const CKind& kind, const QString& name,
                                          std::size_t count) {
  const bool isSecond = node.single && node.single == m_technology.GetUnits2();
  const QString title = isSecond ? QtText(Text::SecondUnits) : ToQt(TextOf(kind.title)),
                number = QString::number(count);
  auto* const item = new QTreeWidgetItem(parent, {title, number});
  item->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
  item->setData(0, kNodeRole, static_cast<int>(m_nodes.size()));
  item->setData(0, kNameRole, name);
  item->setData(0, Qt::AccessibleTextRole, QtText(Text::WithDetail, {FromQt(title), FromQt(number)}));
  m_nodes.push_back(std::move(node));
  m_kinds.push_back(&kind);
  return item;
}

void CTechnologyView::AddCollection(QTreeWidgetItem* group, CCollectionBase& collection) {
  const QString name = collection.Name();
  const SNode node{&collection, nullptr, {}};
  AddChildren(AddNode(group, node, collection.Kind(), name, collection.Count()), node, name);
}

/// Below a kind stand the kinds that its records own.
void CTechnologyView::AddChildren(QTreeWidgetItem* parent, const SNode& node, const QString& name) {
  const std::vector<CRecordBase*> owners = RecordsOf(node);
  for (std::size_t i = 0; !owners.empty() && owners.front()->Child(i); ++i) {
    const CCollectionBase& first = *owners.front()->Child(i);
    std::size_t count = 0;
    for (CRecordBase* const owner : owners) count += owner->Child(i)->Count();
    SNode child = node;
    child.children.push_back(i);
    const QString childName = name + '.' + first.Name();
    AddChildren(AddNode(parent, child, first.Kind(), childName, count), child, childName);
  }
}

void CTechnologyView::Refresh() {
  const QSignalBlocker quiet(m_tree);
  const QTreeWidgetItem* const current = m_tree->currentItem();
  const QString chosen = current ? current->data(0, kNameRole).toString() : QString();
  QStringList open;
  for (QTreeWidgetItemIterator at(m_tree); *at; ++at)
    if ((*at)->isExpanded()) open << (*at)->data(0, kNameRole).toString();
  m_tree->clear();
  m_nodes.clear();
  m_kinds.clear();
  const auto addGroup = [this](CTextId title, const char* name) {
    auto* const group = new QTreeWidgetItem(m_tree, {QtText(title)});
    group->setData(0, kNameRole, name);
    group->setData(1, Qt::AccessibleTextRole, QtText(title));
    group->setFirstColumnSpanned(true);
    return group;
  };
  QTreeWidgetItem* const technology = addGroup(Text::Technology, "/technology");
  QTreeWidgetItem* items = nullptr;
  for (CCollectionBase* const collection : m_technology.Collections()) {
    const auto sample = collection->Kind().make ? collection->Kind().make() : nullptr;
    const bool isItem = sample && sample->IsKindOf(CDesignItem::GetThisClass());
    if (isItem && collection->Count() == 0) continue;
    if (isItem && !items) items = addGroup(Text::DrawingItems, "/items");
    AddCollection(isItem ? items : technology, *collection);
  }
  for (const CTechnology::SSingle& single : m_technology.Singles())
    AddNode(technology, {nullptr, single.record, {}}, single.record->Kind(), single.name, 1);
  for (QTreeWidgetItemIterator at(m_tree); *at; ++at)
    if (open.contains((*at)->data(0, kNameRole).toString())) (*at)->setExpanded(true);
  technology->setExpanded(true);
  m_stack->SetStack(StackOf(m_technology));
  if (!Choose(chosen)) Choose("layers");
  ShowChosen();
}

bool CTechnologyView::Choose(const QString& name) {
  for (QTreeWidgetItemIterator at(m_tree); *at; ++at) {
    if ((*at)->data(0, kNameRole).toString() != name || !(*at)->data(0, kNodeRole).isValid()) continue;
    m_tree->setCurrentItem(*at);
    return true;
  }
  return false;
}

// ---- The table

std::vector<CRecordBase*> CTechnologyView::RecordsOf(const SNode& node) const {
  std::vector<CRecordBase*> records;
  if (node.single) return {node.single};
  for (CRecordBase* one = node.collection->FirstRecord(); one; one = one->Next()) records.push_back(one);
  for (const std::size_t child : node.children) {
    std::vector<CRecordBase*> owned;
    for (CRecordBase* const owner : records)
      for (CRecordBase* one = owner->Child(child)->FirstRecord(); one; one = one->Next()) owned.push_back(one);
    records = std::move(owned);
  }
  return records;
}

void CTechnologyView::ShowChosen() {
  const QTreeWidgetItem* const item = m_tree->currentItem();
  const QVariant place = item ? item->data(0, kNodeRole) : QVariant();
  if (!place.isValid()) return;
  const auto at = static_cast<std::size_t>(place.toInt());
  const bool isSameKind = m_table->accessibleName() == QtText(Text::RecordsOf, {FromQt(item->text(0))});
  const int scrolled = isSameKind ? m_table->verticalScrollBar()->value() : 0;
  m_model->SetRecords(*m_kinds[at], RecordsOf(m_nodes[at]), !m_nodes[at].children.empty());
  m_table->setAccessibleName(QtText(Text::RecordsOf, {FromQt(item->text(0))}));
  m_table->verticalScrollBar()->setValue(scrolled);
  if (isSameKind) return;
  m_table->resizeColumnsToContents();  // by what is in view, not by all rows
  for (int column = 0; column + 1 < m_model->columnCount(); ++column)
    m_table->setColumnWidth(column, std::min(m_table->columnWidth(column), kWidestColumn));
}
