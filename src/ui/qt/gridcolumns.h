// The columns of a grid's view: in which order they stand, how wide they are, and which are hidden. Remembered for each
// user under the key of the grid.
#pragma once
#include <QObject>

#include "ui/qt/gridtable.h"

class QMenu;

class CGridColumns : public QObject {
  Q_OBJECT
 public:
  CGridColumns(CGridModel& model, CGridTable& table);

  /// Columns in their own order, all shown, as wide as the grid says, until a layout that was kept says otherwise. A
  /// damaged one changes nothing.
  void Load();
  /// Keeps the layout, when a person has changed it.
  void Save();
  /// Back to the usual order and widths, all columns shown.
  void Reset();
  /// Shows a column that a person has hidden.
  void Show(int col);
  /// What the header's menu offers: each column to be shown or hidden, the last one shown excepted, and the reset.
  void FillMenu(QMenu& menu);

 private:
  struct SColumn {
    int col;
    int width;  // pixels
    bool isHidden;
  };
  static bool Read(std::string_view text, int count, std::vector<SColumn>& columns);
  CString Write() const;
  void Apply(const std::vector<SColumn>& columns);

  CGridModel& m_model;
  CGridTable& m_table;
  bool m_changed = false;
};
