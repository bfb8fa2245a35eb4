// A drawing: a design as a window shows it.
#pragma once
#include <algorithm>
#include <limits>

#include "model/design/design.h"

/// Where a drawing stands on the screen. One pixel is `scale` design units wide; y grows upwards in the design and
/// downwards on the screen.
class CDesignWindow {
 public:
  CPoint origin;       // the place in the design at the top left corner
  int scale = 10'000;  // design units a pixel
  /// Limited to the range of an int.
  CPoint DsuToDeviceUnits(CPoint place) const {
    const auto pixels = [this](std::int64_t dsu) {
      constexpr std::int64_t kLeast = std::numeric_limits<int>::min(), kMost = std::numeric_limits<int>::max();
      return static_cast<int>(std::clamp(dsu / scale, kLeast, kMost));
    };
    return {pixels(std::int64_t{place.x} - origin.x), pixels(std::int64_t{origin.y} - place.y)};
  }
};

class CDesignDrawing {
 public:
  explicit CDesignDrawing(CDesign* design) : m_design(design) {}
  CDesign* GetDocument() const { return m_design; }
  CDesignWindow& GetWindow() { return m_window; }
  CPoint GetCursorPos() const { return m_cursorPos; }  // of the mouse, in design units
  void SetCursorPos(CPoint place) { m_cursorPos = place; }

  /// The cursor style of all drawings, kept in the settings; 0 when none is.
  static int GetCursor();
  static void SetCursor(int style);

 private:
  CDesign* m_design;
  CDesignWindow m_window;
  CPoint m_cursorPos;
};

/// Asks for an area of a design to be drawn anew; all of it without a box.
void InvalidateDesignRect(const CDesign* design, const CBox* box = nullptr);
