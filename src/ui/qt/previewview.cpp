#include "ui/qt/previewview.h"

#include <QVBoxLayout>

#include "ui/qt/padview.h"
#include "ui/qt/stackview.h"

CPreviewView::CPreviewView(QWidget* parent) : QWidget(parent) {
  (new QVBoxLayout(this))->setContentsMargins(0, 0, 0, 0);
}

void CPreviewView::SetPreview(const CPreview& preview) {
  const auto* const stack = std::get_if<SStackPreview>(&preview);
  const auto* const pad = std::get_if<SPadPreview>(&preview);
  if (stack) {
    if (!m_stack) layout()->addWidget(m_stack = new CStackView(this));
    m_stack->SetStack(*stack);
  }
  if (pad) {
    if (!m_pad) layout()->addWidget(m_pad = new CPadView(this));
    m_pad->SetUnits(CUnits(pad->unitType, pad->precision));
    m_pad->SetPad(*pad);
  }
  if (m_stack) m_stack->setVisible(stack != nullptr);
  if (m_pad) m_pad->setVisible(pad != nullptr);
  setVisible(stack || pad);
}
