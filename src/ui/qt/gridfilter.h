// The filter of a grid's view: which rows are seen while a text is searched for. The grid knows nothing of it.
#pragma once
#include <QSortFilterProxyModel>

#include "ui/qt/gridmodel.h"

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
  bool filterAcceptsRow(int row, const QModelIndex&) const override {
    for (int col = 0; IsActive() && col < m_model.columnCount(); ++col)
      if (m_model.data(m_model.index(row, col), CGridModel::FilterRole)
              .toString()
              .contains(m_text, Qt::CaseInsensitive))
        return true;
    return !IsActive();
  }

 private:
  CGridModel& m_model;
  QString m_text;
};
