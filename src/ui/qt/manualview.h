// The manual in a window of its own: pages of Markdown with their pictures, and the way back.
#pragma once
#include <QTextBrowser>
#include <QWidget>

#include "model/base/text.h"

/// Shows pages with pictures as wide as the window at most.
class CPageBrowser : public QTextBrowser {
  Q_OBJECT

 public:
  using QTextBrowser::QTextBrowser;
  QVariant loadResource(int type, const QUrl& name) override;
};

class CManualView : public QWidget {
  Q_OBJECT

 public:
  /// `path` is that of a page in Markdown.
  CManualView(const CString& path, QWidget* parent);
};
