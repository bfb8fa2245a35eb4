// A list of names of which several can be selected, with what describes the entry under the caret below it.
#pragma once
#include <QWidget>
#include <functional>

#include "model/controls/panel.h"

class QLabel;
class QListWidget;

class CListView : public QWidget {
 public:
  /// `label` stands above the list, its letter included; `entered` is called after a person changed the selection.
  CListView(SListBox& list, const QString& label, QWidget* parent, std::function<void()> entered);
  void Refresh();

 private:
  void TakeSelection();
  SListBox& m_list;
  QListWidget* m_widget;
  QLabel* m_description;
  std::function<void()> m_entered;
};
