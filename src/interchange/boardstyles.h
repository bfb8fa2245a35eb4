// The styles and spans of an imported board: one for each distinct width, shape, text and pair of layers in the file.
//
// Their names say what they are, in millimetres, so that the same file gives the same styles each time. Lengths are
// design units.
#pragma once
#include <map>
#include <tuple>

#include "interchange/importsummary.h"
#include "interchange/sexpression.h"
#include "model/design/design.h"

class CBoardStyles {
 public:
  CBoardStyles(CPcbDesign& design, CImportNames& names) : m_design(design), m_names(names) {}

  CTrackStyle* Track(int width);
  /// The style with these fields; their name is of no matter.
  CPadStyle* Pad(SPadStyleFields fields);
  CPadStyle* Via(int size, int drill);
  CTextStyle* Text(STextStyleFields fields);
  /// The span between two layers, given in any order. `node` is named when they are the same.
  CLayerSpan* Span(CSNode node, CLayer* one, CLayer* other);

 private:
  using PadKey = std::tuple<int, int, int, int, int, int, int, bool>;
  using TextKey = std::tuple<int, int, int, int, CString>;
  CPcbDesign& m_design;
  CImportNames& m_names;
  std::map<int, CTrackStyle*> m_tracks;
  std::map<PadKey, CPadStyle*> m_pads;
  std::map<TextKey, CTextStyle*> m_texts;
  std::map<std::pair<CLayer*, CLayer*>, CLayerSpan*> m_spans;
};
