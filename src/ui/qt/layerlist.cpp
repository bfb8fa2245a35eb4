#include "ui/qt/layerlist.h"

#include <QColorDialog>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QTreeWidgetItemIterator>
#include <optional>

#include "model/design/drawing.h"
#include "model/services/evt.h"
#include "ui/qt/text.h"

namespace {
enum EColumn { kName, kColour };
constexpr int kPlaceRole = Qt::UserRole;     // of a layer: its place; a span's stand behind them
constexpr int kKindRole = Qt::UserRole + 1;  // an item of the colour set

struct SKind {
  int kind;
  CTextId text;
};
constexpr SKind kKinds[] = {{CDesignColours::kPadItem, Text::Pads},
                            {CDesignColours::kViaItem, Text::Vias},
                            {CDesignColours::kTrackItem, Text::Tracks},
                            {CDesignColours::kConnectionItem, Text::Connections},
                            {CDesignColours::kAreaItem, Text::Areas},
                            {CDesignColours::kCopperItem, Text::Copper},
                            {CDesignColours::kShapeItem, Text::Shapes},
                            {CDesignColours::kTextItem, Text::Texts},
                            {CDesignColours::kValueItem, Text::NamesAndValues},
                            {CDesignColours::kBoardItem, Text::BoardOutline},
                            {CDesignColours::kGridItem, Text::Grid}};
}  // namespace

CLayerList::CLayerList(CDesign& design, QWidget* parent)
    : QTreeWidget(parent), m_design(design), m_kinds(new QTreeWidgetItem(this, {QtText(Text::Items)})) {
  setAccessibleName(QtText(Text::Layers));
  setColumnCount(2);
  setHeaderLabels({QtText(Text::Layers), QtText(Text::Colour)});
  setUniformRowHeights(true);
  setRootIsDecorated(false);
  header()->setStretchLastSection(false);
  header()->setSectionResizeMode(kName, QHeaderView::Stretch);
  header()->setSectionResizeMode(kColour, QHeaderView::ResizeToContents);
  chooseColour = [this](const CLayer& layer) -> std::optional<CColour> {
    const QColor chosen =
        QColorDialog::getColor(QColor::fromRgb(layer.GetColour().rgb), this, QtText(Text::ColourOf, {layer.GetName()}),
                               QColorDialog::DontUseNativeDialog);
    if (!chosen.isValid()) return {};
    return CColour{chosen.rgb() & 0xFFFFFF};
  };
  for (const SKind& kind : kKinds) {
    auto* const row = new QTreeWidgetItem(m_kinds, {ToQt(TextOf(kind.text))});
    row->setData(kName, kKindRole, kind.kind);
  }
  for (QTreeWidgetItemIterator at(m_kinds); *at; ++at)  // they have no colour of their own
    (*at)->setData(kColour, Qt::AccessibleTextRole, (*at)->text(kName));
  m_kinds->setExpanded(true);
  connect(this, &QTreeWidget::itemChanged, this, &CLayerList::Changed);
  // The second click on a check mark is one more on the mark.
  connect(this, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* row, int column) {
    if (column == kColour) ChooseColour(row);
  });
  Refresh();
}

QIcon CLayerList::Swatch(CColour colour) const {
  QPixmap pixmap(iconSize().isValid() ? iconSize() : QSize(16, 16));
  pixmap.fill(QColor::fromRgb(colour.rgb));
  QPainter painter(&pixmap);
  painter.setPen(palette().color(QPalette::Text));
  painter.drawRect(pixmap.rect().adjusted(0, 0, -1, -1));
  return QIcon(pixmap);
}

void CLayerList::ShowVisible(QTreeWidgetItem& row, bool visible) {
  row.setCheckState(kName, visible ? Qt::Checked : Qt::Unchecked);
  row.setData(kName, Qt::AccessibleDescriptionRole, QtText(visible ? Text::Shown : Text::Hidden));
}

void CLayerList::ShowLayer(int place, CLayer& layer) {
  QTreeWidgetItem* const row = topLevelItem(place);
  const QString name = ToQt(layer.GetName()), colour = ToQt(ColourText(layer.GetColour()));
  row->setText(kName, name);
  row->setData(kName, kPlaceRole, place);
  ShowVisible(*row, layer.GetDisplayed());
  row->setData(kName, Qt::AccessibleTextRole, name);
  row->setToolTip(kName, QtText(Text::SideAndUsage, {layer.GetSideString(), layer.GetUsageString()}));
  row->setIcon(kColour, Swatch(layer.GetColour()));
  row->setData(kColour, Qt::AccessibleTextRole, QtText(Text::ColourOf, {layer.GetName()}) + ": " + colour);
  row->setToolTip(kColour, colour);
}

/// Rows are kept, and with them the cursor, the scroll position and what is folded.
void CLayerList::Refresh() {
  m_isFilling = true;
  const auto layers = static_cast<int>(m_design.layers.Count() + m_design.layerSpans.Count());
  while (indexOfTopLevelItem(m_kinds) > layers) delete takeTopLevelItem(layers);
  while (indexOfTopLevelItem(m_kinds) < layers) insertTopLevelItem(indexOfTopLevelItem(m_kinds), new QTreeWidgetItem);
  int place = 0;
  for (CLayer& layer : m_design.layers) ShowLayer(place++, layer);
  for (CLayerSpan& span : m_design.layerSpans) ShowLayer(place++, span);
  for (int i = 0; i < m_kinds->childCount(); ++i)
    ShowVisible(*m_kinds->child(i), m_design.Colours().GetVisible(m_kinds->child(i)->data(kName, kKindRole).toInt()));
  m_isFilling = false;
}

/// By its place, because the design may have lost the layer since the list was filled.
CLayer* CLayerList::LayerOf(const QTreeWidgetItem* row) const {
  const QVariant place = row->data(kName, kPlaceRole);
  if (!place.isValid()) return nullptr;
  const auto at = static_cast<std::size_t>(place.toInt());
  const std::size_t layers = m_design.layers.Count();
  CRecordBase* const record = at < layers ? m_design.layers.At(at) : m_design.layerSpans.At(at - layers);
  return record && ToQt(record->RecordName()) == row->text(kName) ? static_cast<CLayer*>(record) : nullptr;
}

void CLayerList::Changed(QTreeWidgetItem* row) {
  if (m_isFilling) return;
  const bool visible = row->checkState(kName) == Qt::Checked;
  if (CLayer* const layer = LayerOf(row)) layer->SetDisplayed(visible);
  else if (const QVariant kind = row->data(kName, kKindRole); kind.isValid())
    m_design.Colours().SetVisible(kind.toInt(), visible);
  m_isFilling = true;
  ShowVisible(*row, visible);
  m_isFilling = false;
  CEvt::Send("DesignColoursChanged", 0, 0);
  InvalidateDesignRect(&m_design);
}

void CLayerList::keyPressEvent(QKeyEvent* event) {
  const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (!isReturn || !currentItem()) return QTreeWidget::keyPressEvent(event);
  ChooseColour(currentItem());
}

void CLayerList::ChooseColour(const QTreeWidgetItem* row) {
  CLayer* const layer = LayerOf(row);
  if (!layer) return;
  if (const std::optional<CColour> colour = chooseColour(*layer)) SetColour(*layer, *colour);
}

void CLayerList::SetColour(CLayer& layer, CColour colour) {
  if (layer.GetColour() == colour) return;
  {
    const CCommandScope scope(&m_design, "SetLayerColour");
    layer.SetColour(colour);
  }
  CEvt::Send("ColoursChanged", 0, 0);
  CEvt::Send("DesignColoursChanged", 0, 0);
  InvalidateDesignRect(&m_design);
  Refresh();
}
