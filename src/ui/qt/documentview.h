// One open design in a tab: the drawing with the technology beside it, or the technology alone where there is nothing
// to draw. The list of its layers stands in the dock that all tabs share.
#pragma once
#include <QPointer>
#include <QSplitter>

#include "ui/qt/document.h"
#include "ui/qt/layerlist.h"

class CDesignView;
class CTechnologyView;

class CDocumentView : public QSplitter {
  Q_OBJECT

 public:
  CDocumentView(std::unique_ptr<CDocument> document, QWidget* parent);
  ~CDocumentView() override;

  CDocument& Document() { return *m_document; }
  /// Null where there is nothing to draw.
  CDesignView* View() const { return m_view; }
  /// Null where there is nothing to draw. Whoever shows it gives it a place; it goes with the tab.
  CLayerList* Layers() const { return m_layers; }
  /// Draws an area of the design anew, all of it without a box, and shows layers and records as they are soon
  /// afterwards.
  void Invalidate(const CBox* area);
  /// Keeps how wide the parts are, for the designs opened next.
  void SaveLayout() const;

 signals:
  void CursorMoved(CPoint place);
  void SelectionChanged();
  /// Layers and records are shown anew.
  void Changed();

 private:
  std::unique_ptr<CDocument> m_document;
  QPointer<CLayerList> m_layers;
  CDesignView* m_view = nullptr;
  CTechnologyView* m_technology;
  bool m_refreshing = false;  // a refresh is on its way
};
