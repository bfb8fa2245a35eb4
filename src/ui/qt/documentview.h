// One open design in a tab: the layers, the drawing and the technology side by side; the technology alone where there
// is nothing to draw.
#pragma once
#include <QSplitter>

#include "ui/qt/document.h"

class CDesignView;
class CLayerList;
class CTechnologyView;

class CDocumentView : public QSplitter {
  Q_OBJECT

 public:
  CDocumentView(std::unique_ptr<CDocument> document, QWidget* parent);
  ~CDocumentView() override;

  CDocument& Document() { return *m_document; }
  /// Null where there is nothing to draw.
  CDesignView* View() const { return m_view; }
  /// Draws an area of the design anew, all of it without a box, and shows layers and records as they are soon
  /// afterwards.
  void Invalidate(const CBox* area);
  /// Keeps how wide the parts are, for this design and the next ones.
  void SaveLayout() const;

 signals:
  void CursorMoved(CPoint place);
  /// Layers and records are shown anew.
  void Changed();

 private:
  std::unique_ptr<CDocument> m_document;
  CLayerList* m_layers = nullptr;
  CDesignView* m_view = nullptr;
  CTechnologyView* m_technology;
  bool m_refreshing = false;  // a refresh is on its way
};
