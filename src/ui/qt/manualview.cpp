#include "ui/qt/manualview.h"

#include <QImage>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include "ui/qt/text.h"

QVariant CPageBrowser::loadResource(int type, const QUrl& name) {
  QVariant resource = QTextBrowser::loadResource(type, name);
  if (type != QTextDocument::ImageResource) return resource;
  QImage image = resource.canConvert<QImage>() ? resource.value<QImage>() : QImage();
  if (image.isNull()) image.loadFromData(resource.toByteArray());
  const int widest = viewport()->width() - 4 * static_cast<int>(document()->documentMargin());
  if (image.width() <= widest || widest <= 0) return image.isNull() ? resource : image;
  return image.scaledToWidth(widest, Qt::SmoothTransformation);
}

CManualView::CManualView(const CString& path, QWidget* parent) : QWidget(parent, Qt::Window) {
  constexpr QSize kSize(900, 640);
  setWindowTitle(QtText(Text::Manual));
  setAttribute(Qt::WA_DeleteOnClose);
  resize(kSize);
  auto* const browser = new CPageBrowser(this);
  browser->setAccessibleName(QtText(Text::Manual));
  browser->setOpenExternalLinks(true);
  auto* const back = new QPushButton(QtText(Text::ButtonBack), this);
  back->setEnabled(false);
  connect(back, &QPushButton::clicked, browser, &QTextBrowser::backward);
  connect(browser, &QTextBrowser::backwardAvailable, back, &QPushButton::setEnabled);
  connect(new QShortcut(QKeySequence::Close, this), &QShortcut::activated, this, &QWidget::close);
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(back, 0, Qt::AlignLeft);
  layout->addWidget(browser);
  browser->setFocus();
  layout->activate();  // the width that pictures have to fit into
  browser->setSource(QUrl::fromLocalFile(ToQt(path)));
}
