// Places and rectangles, in design units, y up.
#pragma once
#include <vector>

struct CPoint {
  int x = 0;
  int y = 0;
  bool operator==(const CPoint&) const = default;
};
using CPoints = std::vector<CPoint>;

/// An upright rectangle; empty while right < left.
struct CBox {
  int left = 0, bottom = 0, right = -1, top = -1;
  bool IsEmpty() const { return right < left || top < bottom; }
  void Include(CPoint point) { Include(CBox{point.x, point.y, point.x, point.y}); }
  void Include(const CBox& box);
  bool operator==(const CBox&) const = default;
};
