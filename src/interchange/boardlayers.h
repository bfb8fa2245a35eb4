// The layers of a board file, made layers of a design.
//
// Items name layers by the key that the layer table gives: the canonical name ("F.Cu") in newer files, the user's own
// name of a copper layer in older ones.
#pragma once
#include <unordered_map>
#include <vector>

#include "interchange/importsummary.h"
#include "interchange/sexpression.h"
#include "model/design/design.h"

/// Files up to this format number the layers and know copper layers by their user names.
inline constexpr std::int64_t kLastNumberedLayers = 20171130;

class CBoardLayers {
 public:
  /// Replaces the layers of `design` other than the built-in one by those of the table, in stack order.
  CBoardLayers(CSNode table, std::int64_t format, CPcbDesign& design, CImportNames& names);

  /// The layer of that key. Null for a layer of the notation that this board does not have; any other key is a fault.
  CLayer* Find(CSNode key) const;
  /// All layers that a list names, "*.Cu" and "F&B.Cu" included, each once and in the order of the stack.
  std::vector<CLayer*> All(CSNode list) const;
  /// The layer at the same place of the other side, or the layer itself.
  CLayer* Opposite(CLayer* layer) const;

 private:
  std::unordered_map<std::string_view, CLayer*> m_byKey;
  std::unordered_map<CString, CLayer*> m_byCanonicalName;
  std::vector<std::pair<CString, CLayer*>> m_inOrder;  // with their canonical names
};
