#include "ui/qt/layerlist.h"

#include <QColorDialog>
#include <QHeaderView>
#include <QPainter>
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
  unsigned text;
};
constexpr SKind kKinds[] = {
    {CDesignColours::kPadItem, 21310},        {CDesignColours::kViaItem, 21311},  {CDesignColours::kTrackItem, 21312},
    {CDesignColours::kConnectionItem, 21313}, {CDesignColours::kAreaItem, 21314}, {CDesignColours::kCopperItem, 21315},
    {CDesignColours::kShapeItem, 21316},      {CDesignColours::kTextItem, 21317}, {CDesignColours::kValueItem, 21318},
    {CDesignColours::kBoardItem, 21319},      {CDesignColours::kGridItem, 21320}};
}  // namespace

CLayerList::CLayerList(CDesign& design, QWidget* parent) : QTreeWidget(parent), m_design(design) {
  setAccessibleName(QtText(21302));
  setColumnCount(2);
  setHeaderLabels({QtText(21302), QtText(7000)});
  setUniformRowHeights(true);
  setRootIsDecorated(false);
  header()->setStretchLastSection(false);
  header()->setSectionResizeMode(kName, QHeaderView::Stretch);
  header()->setSectionResizeMode(kColour, QHeaderView::ResizeToContents);
  chooseColour = [this](const CLayer& layer) -> std::optional<CColour> {
    const QColor chosen = QColorDialog::getColor(QColor::fromRgb(layer.GetColour().rgb), this,
                                                 QtText(21303, {layer.GetName()}), QColorDialog::DontUseNativeDialog);
    if (!chosen.isValid()) return {};
    return CColour{chosen.rgb() & 0xFFFFFF};
  };
  connect(this, &QTreeWidget::itemChanged, this, &CLayerList::Changed);
  connect(this, &QTreeWidget::itemActivated, this, &CLayerList::Activated);
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

void CLayerList::AddLayer(CLayer& layer) {
  auto* const row = new QTreeWidgetItem(this);
  const QString name = ToQt(layer.GetName()), colour = ToQt(ColourText(layer.GetColour()));
  row->setText(kName, name);
  row->setData(kName, kPlaceRole, topLevelItemCount() - 1);
  row->setCheckState(kName, layer.GetDisplayed() ? Qt::Checked : Qt::Unchecked);
  row->setData(kName, Qt::AccessibleTextRole, name);
  row->setData(kName, Qt::AccessibleDescriptionRole, QtText(layer.GetDisplayed() ? CTextId(21304) : CTextId(21305)));
  row->setToolTip(kName, QtText(21306, {layer.GetSideString(), layer.GetUsageString()}));
  row->setIcon(kColour, Swatch(layer.GetColour()));
  row->setData(kColour, Qt::AccessibleTextRole, QtText(21303, {layer.GetName()}) + ": " + colour);
  row->setToolTip(kColour, colour);
}

void CLayerList::AddKind(QTreeWidgetItem* group, int kind, unsigned text) {
  auto* const row = new QTreeWidgetItem(group);
  const bool visible = m_design.Colours().GetVisible(kind);
  row->setText(kName, ToQt(TextOf(text)));
  row->setData(kName, kKindRole, kind);
  row->setCheckState(kName, visible ? Qt::Checked : Qt::Unchecked);
  row->setData(kName, Qt::AccessibleDescriptionRole, QtText(visible ? CTextId(21304) : CTextId(21305)));
}

void CLayerList::Refresh() {
  m_isFilling = true;
  const QModelIndex focus = currentIndex();
  const int row = focus.row();
  const bool isLayer = focus.isValid() && !focus.parent().isValid();
  clear();
  for (CLayer& layer : m_design.layers) AddLayer(layer);
  for (CLayerSpan& span : m_design.layerSpans) AddLayer(span);
  auto* const group = new QTreeWidgetItem(this, {QtText(21307)});
  for (const SKind& kind : kKinds) AddKind(group, kind.kind, kind.text);
  group->setExpanded(true);
  if (isLayer && row < topLevelItemCount()) setCurrentItem(topLevelItem(row));
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
  row->setData(kName, Qt::AccessibleDescriptionRole, QtText(visible ? CTextId(21304) : CTextId(21305)));
  m_isFilling = false;
  CEvt::Send("DesignColoursChanged", 0, 0);
  InvalidateDesignRect(&m_design);
}

void CLayerList::Activated(QTreeWidgetItem* row, int) {
  if (CLayer* const layer = LayerOf(row)) ChooseColour(*layer);
}

void CLayerList::ChooseColour(CLayer& layer) {
  if (const std::optional<CColour> colour = chooseColour(layer)) SetColour(layer, *colour);
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
