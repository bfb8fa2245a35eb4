#include "ui/qt/listview.h"

#include <QLabel>
#include <QListWidget>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "ui/qt/commandtext.h"

CListView::CListView(SListBox& list, const QString& label, QWidget* parent, std::function<void()> entered)
    : QWidget(parent),
      m_list(list),
      m_widget(new QListWidget(this)),
      m_description(new QLabel(this)),
      m_entered(std::move(entered)) {
  auto* const caption = new QLabel(label, this);
  caption->setBuddy(m_widget);
  m_widget->setAccessibleName(PlainText(label));
  m_widget->setSelectionMode(QAbstractItemView::ExtendedSelection);
  m_widget->setUniformItemSizes(true);
  constexpr int kLetters = 60;  // that an entry has room for, at least
  m_widget->setMinimumWidth(fontMetrics().averageCharWidth() * kLetters);
  m_description->setTextFormat(Qt::PlainText);
  m_description->setWordWrap(true);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(caption);
  column->addWidget(m_widget, 1);
  column->addWidget(m_description);
  connect(m_widget, &QListWidget::itemSelectionChanged, this, [this] { TakeSelection(); });
  Refresh();
}

void CListView::TakeSelection() {
  for (std::size_t at = 0; at < m_list.entries.size(); ++at)
    m_list.entries[at].selected = m_widget->item(static_cast<int>(at))->isSelected();
  if (m_list.selectionChanged) m_list.selectionChanged();
  m_entered();
}

void CListView::Refresh() {
  const QSignalBlocker quiet(m_widget);
  const int count = static_cast<int>(m_list.entries.size());
  while (m_widget->count() > count) delete m_widget->takeItem(m_widget->count() - 1);
  for (int at = 0; at < count; ++at) {
    const SListBox::SEntry& entry = m_list.entries[static_cast<std::size_t>(at)];
    if (at == m_widget->count()) m_widget->addItem(QString());
    QListWidgetItem& item = *m_widget->item(at);
    if (item.text() != ToQt(entry.text)) item.setText(ToQt(entry.text));
    if (item.isSelected() != entry.selected) item.setSelected(entry.selected);
  }
  m_description->setText(ToQt(m_list.description));
  m_description->setVisible(!m_list.description.empty());
  m_widget->setAccessibleDescription(ToQt(m_list.description));
}
