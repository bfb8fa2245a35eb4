// Paints the cells of a grid and edits them, with the editor that each cell asks for.
//
// An editor hands over what a person entered, and only when they did: opening and closing one changes no cell. An input
// that the cell does not take leaves the editor open.
#pragma once
#include <QPointer>
#include <QStyledItemDelegate>
#include <functional>

#include "ui/qt/gridfilter.h"

class CGridDelegate : public QStyledItemDelegate {
  Q_OBJECT
 public:
  explicit CGridDelegate(CGridFilter& filter, QObject* parent = nullptr);

  /// Enters an input into a cell; false when the cell does not take it.
  std::function<bool(const QModelIndex& index, const SInput& input)> onEnter;
  /// A person clicked the check mark of a cell.
  std::function<void(const QModelIndex& index)> onToggle;
  /// A person began to change what an editor holds, or that editor was closed.
  std::function<void()> onEdited;

  /// The open editor, or null.
  QWidget* Editor() const { return m_editor; }
  /// Enters what the open editor holds and closes it; false, and the editor open, when the cell does not take it.
  bool Finish(EndEditHint hint = NoHint);
  /// The open editor was closed.
  void Forget();
  /// Whether a person has changed what the open editor holds.
  bool HasChangedEdit() const { return m_editor && m_edited; }
  /// Whether the last input of the open editor was not taken.
  bool IsRefused() const { return m_refused; }

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
  void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const override;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;
  bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

 private:
  QWidget* MakeCombo(QWidget* parent, const QModelIndex& index) const;
  void NoteEdit() const;
  CComboItems ItemsOf(const QModelIndex& index) const;
  /// What the editor holds when a person has changed it.
  bool ReadEditor(QWidget* editor, const QModelIndex& index, SInput& input) const;
  void PaintCheckBox(QPainter* painter, const QStyleOptionViewItem& option) const;

  CGridFilter& m_filter;
  mutable QPointer<QWidget> m_editor;
  mutable bool m_refused = false;
  mutable bool m_edited = false;
};
