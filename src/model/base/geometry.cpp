#include "model/base/geometry.h"

#include <algorithm>

void CBox::Include(const CBox& box) {
  if (box.IsEmpty()) return;
  if (IsEmpty()) {
    *this = box;
    return;
  }
  left = std::min(left, box.left);
  bottom = std::min(bottom, box.bottom);
  right = std::max(right, box.right);
  top = std::max(top, box.top);
}
