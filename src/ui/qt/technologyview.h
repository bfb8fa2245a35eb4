// A technology to look at: its collections as a tree with counts, the records of the chosen one as a table with where
// each is used, and below them the cross-section of its stack.
#pragma once
#include <QSplitter>

#include "model/design/technology.h"

class CRecordModel;
class CStackView;
class QTableView;
class QTreeWidget;
class QTreeWidgetItem;

class CTechnologyView : public QSplitter {
  Q_OBJECT

 public:
  explicit CTechnologyView(CTechnology& technology, QWidget* parent = nullptr);

  /// Shows the technology as it is now, keeping what is chosen. To be called whenever it has changed.
  void Refresh();
  /// Chooses a collection by the name it has in files ("padStyles"), or "padStyles.exceptions"; false for none.
  bool Choose(const QString& name);

 private:
  /// Where records are found: a collection of the technology, and which collections of its records.
  struct SNode {
    CCollectionBase* collection = nullptr;
    CRecordBase* single = nullptr;
    std::vector<std::size_t> children;
  };
  void AddCollection(QTreeWidgetItem* group, CCollectionBase& collection);
  QTreeWidgetItem* AddNode(QTreeWidgetItem* parent, SNode node, const CKind& kind, const QString& name,
                           std::size_t count);
  void AddChildren(QTreeWidgetItem* parent, const SNode& node, const QString& name);
  std::vector<CRecordBase*> RecordsOf(const SNode& node) const;
  void ShowChosen();

  CTechnology& m_technology;
  QTreeWidget* m_tree;
  QTableView* m_table;
  CRecordModel* m_model;
  CStackView* m_stack;
  std::vector<SNode> m_nodes;
  std::vector<const CKind*> m_kinds;  // by node
};
