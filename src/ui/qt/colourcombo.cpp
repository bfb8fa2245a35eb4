#include "ui/qt/colourcombo.h"

#include <QColorDialog>
#include <QPainter>

#include "model/controls/fields.h"
#include "ui/qt/text.h"

CColourCombo::CColourCombo(QWidget* parent) : QComboBox(parent) {
  setEditable(true);
  setInsertPolicy(NoInsert);
  setCompleter(nullptr);
  for (const SComboItem& item : PaletteItems())
    addItem(Swatch(QColor(static_cast<QRgb>(item.value)), palette()), ToQt(item.text));
  addItem(QtText(Text::OtherColour));
  connect(this, &QComboBox::activated, this, &CColourCombo::Chosen);
}

void CColourCombo::SetText(const QString& text) {
  setCurrentIndex(findText(text, Qt::MatchFixedString));
  setEditText(text);
  m_before = text;
}

QIcon CColourCombo::Swatch(const QColor& colour, const QPalette& palette) {
  constexpr int kSize = 32;  // scaled down to the icon size
  QPixmap swatch(kSize, kSize);
  swatch.fill(palette.color(QPalette::Text));
  QPainter(&swatch).fillRect(swatch.rect().adjusted(2, 2, -2, -2), colour);
  return swatch;
}

void CColourCombo::Chosen(int index) {
  if (index == count() - 1) {
    const QColor before(m_before);
    setEditText(m_before);
    const QColor chosen =
        QColorDialog::getColor(before.isValid() ? before : QColor(Qt::black), this, QtText(Text::Colour));
    if (!chosen.isValid()) return;
    SetText(chosen.name().toUpper());
  }
  m_before = currentText();
  emit ColourChosen();
}
