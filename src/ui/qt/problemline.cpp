#include "ui/qt/problemline.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <algorithm>

#include "ui/qt/theme.h"

CProblemLine::CProblemLine(QWidget* parent) : QWidget(parent), m_text(new QLabel(this)) {
  auto* const sign = new QLabel(this);
  const int side = style()->pixelMetric(QStyle::PM_SmallIconSize);
  sign->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(side));
  m_text->setTextFormat(Qt::PlainText);
  m_text->setWordWrap(true);
  m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
  m_text->setObjectName(QStringLiteral("problem"));
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(sign, 0, Qt::AlignTop);
  row->addWidget(m_text, 1);
  hide();
}

void CProblemLine::Show(const QString& reason) {
  QPalette colours;
  colours.setColor(QPalette::WindowText, ProblemText(palette().color(QPalette::Window)));
  m_text->setPalette(colours);
  m_text->setText(reason);
  show();
  TakeHeight();
  QAccessibleEvent event(m_text, QAccessible::Alert);
  QAccessible::updateAccessibility(&event);
}

/// A splitter around it does not ask how high a text is at a width, and would cut it.
void CProblemLine::TakeHeight() {
  const int beside = layout()->spacing() + style()->pixelMetric(QStyle::PM_SmallIconSize);
  m_text->setMinimumHeight(0);  // which would count as its height
  m_text->setMinimumHeight(std::max(m_text->heightForWidth(std::max(width() - beside, 1)), 0));
}

void CProblemLine::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  TakeHeight();
}

QString CProblemLine::Text() const { return isHidden() ? QString() : m_text->text(); }
