// The filter of a grid's view: which rows are seen while a text is searched for. The grid knows nothing of it.
#pragma once
#include <QSortFilterProxyModel>

#include "ui/qt/gridmodel.h"
#include "ui/qt/text.h"

class CGridFilter : public QSortFilterProxyModel {
  Q_OBJECT
 public:
  explicit CGridFilter(CGridModel& model, QObject* parent = nullptr) : QSortFilterProxyModel(parent), m_model(model) {
    setDynamicSortFilter(false);  // a row stays while a person types into it, though it may match no more
    setSourceModel(&model);
  }

  CGridModel& Model() const { return m_model; }
  /// Shows the rows of which a cell contains `text`, whatever its case; an empty text shows all.
  void SetText(const QString& text) {
    m_text = text;
    invalidate();  // at once: telling of each run of rows that goes takes time with their square
  }
  bool IsActive() const { return !m_text.isEmpty(); }
  /// The cell of the grid that stands at an index of this proxy.
  SGridPlace PlaceOf(const QModelIndex& index) const {
    return index.isValid() ? SGridPlace{m_model.GridRow(mapToSource(index)), index.column()} : SGridPlace{};
  }
  /// The index of a cell of the grid; invalid while its row is not shown.
  QModelIndex IndexOf(SGridPlace place) const { return mapFromSource(m_model.IndexOf(place.row, place.col)); }

 protected:
  /// Owned rows are seen with their owner, and an owner with any of its own that is searched for.
  bool filterAcceptsRow(int row, const QModelIndex&) const override {
    if (!IsActive()) return true;
    const CEditGrid& grid = m_model.Grid();
    const int at = m_model.GridRow(m_model.index(row, 0));
    const int owner = grid.OwnerRow(at);
    if (IsFound(at) || (owner != at && IsFound(owner))) return true;
    for (int owned = at + 1; owner == at && owned < grid.OwnedEnd(at); ++owned)
      if (grid.IsPresent(owned) && IsFound(owned)) return true;
    return false;
  }

 private:
  bool IsFound(int gridRow) const {
    for (int col = 0; col < m_model.Grid().GetColumnCount(); ++col)
      if (ToQt(m_model.Grid().GetItemText(gridRow, col)).contains(m_text, Qt::CaseInsensitive)) return true;
    return false;
  }

  CGridModel& m_model;
  QString m_text;
};
