// A choice of colours: a palette with swatches, a line for "#RRGGBB", and a chooser for any other.
#pragma once
#include <QComboBox>

class CColourCombo : public QComboBox {
  Q_OBJECT
 public:
  explicit CColourCombo(QWidget* parent = nullptr);

  /// The text as it stands, a colour or not.
  void SetText(const QString& text);
  /// A swatch for lists and cells.
  static QIcon Swatch(const QColor& colour, const QPalette& palette);

 signals:
  /// A person chose an entry or another colour; the text has it.
  void ColourChosen();

 private:
  void Chosen(int index);
  QString m_before;  // the text before "Other colour" was chosen
};
