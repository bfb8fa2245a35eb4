// The layers of a design beside its drawing: which are shown, and in which colour; below them what can be hidden
// whatever its layer.
#pragma once
#include <QTreeWidget>
#include <functional>

#include "model/design/design.h"

class CLayerList : public QTreeWidget {
  Q_OBJECT

 public:
  explicit CLayerList(CDesign& design, QWidget* parent = nullptr);

  /// Shows the layers as the design has them now.
  void Refresh();
  /// Gives a layer a colour: a step of its own that can be taken back.
  void SetColour(CLayer& layer, CColour colour);
  /// Asks for another colour; nothing when the person keeps the old one.
  std::function<std::optional<CColour>(const CLayer& layer)> chooseColour;

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Changed(QTreeWidgetItem* row);
  void ShowVisible(QTreeWidgetItem& row, bool visible);
  void ShowLayer(int place, CLayer& layer);
  CLayer* LayerOf(const QTreeWidgetItem* row) const;
  void ChooseColour(const QTreeWidgetItem* row);
  QIcon Swatch(CColour colour) const;

  CDesign& m_design;
  QTreeWidgetItem* m_kinds;  // the group of those, below the layers
  bool m_isFilling = false;
};
