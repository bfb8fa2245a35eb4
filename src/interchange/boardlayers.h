// The layers of a board file, made layers of a design.
//
// Items name layers by the key that the layer table gives: the canonical name ("F.Cu") in newer files, the user's own
// name of a copper layer in older ones.
#pragma once
#include <optional>
#include <unordered_map>
#include <vector>

#include "interchange/importsummary.h"
#include "interchange/sexpression.h"
#include "model/design/design.h"

/// Files up to this format number the layers and know copper layers by their user names.
inline constexpr std::int64_t kLastNumberedLayers = 20171130;

inline bool IsCopper(const CLayer* layer) { return layer->GetUsage() == ELayerUsage::Electrical; }

class CBoardLayers {
 public:
  /// More than any board has. Lists such as "*.Cu" name as many layers as there are.
  static constexpr std::size_t kMaxLayers = 128;

  /// Replaces the layers of `design` other than the built-in one by those of the table, in stack order. Without a table
  /// they are those that an empty board of two copper layers has.
  CBoardLayers(CSNode table, std::int64_t format, CPcbDesign& design, CImportNames& names);

  /// The layer of that key. Null for a layer of the notation that this board does not have; any other key is a fault.
  CLayer* Find(CSNode key) const;
  /// All layers that a list (layer ...) or (layers ...) names, "*.Cu" and "F&B.Cu" included, each once and in the order
  /// of the stack.
  std::vector<CLayer*> All(CSNode list) const;
  /// The layer at the same place of the other side, or the layer itself.
  CLayer* Opposite(CLayer* layer) const;

 private:
  std::optional<CSList> m_usual;  // the table of a board that has none
  std::unordered_map<std::string_view, CLayer*> m_byKey;
  std::unordered_map<CString, CLayer*> m_byCanonicalName;
  std::vector<std::pair<CString, CLayer*>> m_inOrder;  // with their canonical names
};
