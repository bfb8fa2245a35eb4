#include "ui/qt/documentview.h"

#include <QTimer>

#include "ui/qt/designview.h"
#include "ui/qt/layoutstore.h"
#include "ui/qt/technologyview.h"
#include "ui/qt/text.h"

namespace {
constexpr const char* kSplitter = "Splitter";
}  // namespace

CDocumentView::CDocumentView(std::unique_ptr<CDocument> document, QWidget* parent)
    : QSplitter(Qt::Horizontal, parent), m_document(std::move(document)) {
  setChildrenCollapsible(true);
  CDesignDrawing* const drawing = m_document->Drawing();
  if (drawing) {
    m_layers = new CLayerList(*drawing->GetDocument());
    addWidget(m_view = new CDesignView(*drawing, this));
    connect(m_view, &CDesignView::CursorMoved, this, &CDocumentView::CursorMoved);
    connect(m_view, &CDesignView::SelectionChanged, this, &CDocumentView::SelectionChanged);
  }
  addWidget(m_technology = new CTechnologyView(m_document->Technology(), this));
  setFocusProxy(widget(0));
  if (!drawing) return;
  // Beside a drawing the technology is a column.
  for (QSplitter* const part : m_technology->findChildren<QSplitter*>()) part->setOrientation(Qt::Vertical);
  setStretchFactor(0, 1);
  setSizes({640, 320});  // pixels, or what there is in proportion
  restoreState(ReadLayout(kSplitter));
}

/// The views go before what they show.
CDocumentView::~CDocumentView() {
  setFocusProxy(nullptr);
  delete m_layers;
  delete m_view;
  delete m_technology;
}

void CDocumentView::Invalidate(const CBox* area) {
  if (m_view) m_view->Invalidate(area);
  if (m_refreshing) return;
  m_refreshing = true;
  QTimer::singleShot(0, this, [this] {
    m_refreshing = false;
    if (m_layers) m_layers->Refresh();
    m_technology->Refresh();
    emit Changed();
  });
}

void CDocumentView::SaveLayout() const {
  if (m_view) KeepLayout(kSplitter, saveState());
}
