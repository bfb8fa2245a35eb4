#include "ui/qt/problemline.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>

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
  QAccessibleEvent event(m_text, QAccessible::Alert);
  QAccessible::updateAccessibility(&event);
}

QString CProblemLine::Text() const { return isHidden() ? QString() : m_text->text(); }
