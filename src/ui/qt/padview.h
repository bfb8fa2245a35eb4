// A pad drawn to scale with its hole, and its dimensions written beside it.
#pragma once
#include <QWidget>

#include "model/controls/preview.h"
#include "model/design/units.h"

class CPadView : public QWidget {
  Q_OBJECT

 public:
  explicit CPadView(QWidget* parent = nullptr);
  void SetPad(const SPadPreview& pad);
  /// In which the dimensions are written; millimetres until told otherwise.
  void SetUnits(const CUnits& units);
  QSize sizeHint() const override { return {240, 240}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString LengthOf(int dsu) const;
  bool HasLength() const;
  QString HoleText() const;
  void Describe();

  SPadPreview m_pad{};
  CUnits m_units{EUnitType::Millimetre, 3};
};
