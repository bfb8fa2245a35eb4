// What is drawn beside a panel: the stack of layers, a pad to scale, or nothing, and then it takes no room.
#pragma once
#include <QWidget>

#include "model/controls/preview.h"

class CStackView;
class CPadView;

class CPreviewView : public QWidget {
 public:
  explicit CPreviewView(QWidget* parent);
  void SetPreview(const CPreview& preview);

 private:
  CStackView* m_stack = nullptr;  // made when first needed
  CPadView* m_pad = nullptr;
};
