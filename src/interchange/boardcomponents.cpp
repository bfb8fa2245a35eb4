// Footprints of a board, made symbols, parts and components of a design.
//
// A footprint of the back side stands in the file as seen from the front. Its symbol is as it is on the front, so
// places and angles are mirrored back, and layers change sides; footprints of one name share a symbol when they are
// then equal.
#include <algorithm>
#include <iterator>
#include <limits>
#include <set>

#include "interchange/boardcontext.h"
#include "model/base/decimal.h"

namespace {
int SideOf(const std::vector<CLayer*>& layers) {
  bool top = false, bottom = false;
  for (const CLayer* const layer : layers) {
    top |= layer->GetSide() != ELayerSide::Bottom;
    bottom |= layer->GetSide() != ELayerSide::Top;
  }
  return top == bottom ? ELayerSide::All : top ? ELayerSide::Top : ELayerSide::Bottom;
}

int OtherSide(int side) {
  return side == ELayerSide::Top ? ELayerSide::Bottom : side == ELayerSide::Bottom ? ELayerSide::Top : side;
}

/// `share` (as text, 0 to 0.5) of a length, rounded half up.
int Share(CSNode share, int length) {
  constexpr std::int64_t kOne = 100'000'000;
  std::int32_t scaled = 0;
  if (!ScaleDecimal(share.Text(), kOne, scaled) || scaled < 0 || scaled > kOne / 2)
    Fault(share, Quoted(share.Text()) + " is not a share between 0 and 0.5");
  return static_cast<int>((std::int64_t{length} * scaled + kOne / 2) / kOne);
}

int ShapeOf(SBoardContext& context, CSNode pad, CSNode word) {
  struct SShape {
    std::string_view word;
    int shape;
    bool exact;
  };
  static constexpr SShape kShapes[] = {{"circle", EPadShape::Round, true},
                                       {"rect", EPadShape::Rectangle, true},
                                       {"oval", EPadShape::Oval, true},
                                       {"roundrect", EPadShape::RoundedRectangle, true},
                                       {"trapezoid", EPadShape::Rectangle, false},
                                       {"custom", EPadShape::Rectangle, false}};
  for (const SShape& one : kShapes) {
    if (one.word != word.Text()) continue;
    if (!one.exact) context.LeaveOut(pad, word);
    return one.shape;
  }
  Fault(word, Quoted(word.Text()) + " is no shape of a pad: circle, rect, oval, roundrect, trapezoid or custom");
}

/// (drill 0.5), (drill oval 0.6 1.2), with or without an (offset x y).
void ReadDrill(SBoardContext& context, CSNode drill, SPadStyleFields& style) {
  std::vector<int> sizes;
  bool oval = false;
  for (const CSNode value : drill) {
    if (value.IsList()) {
      context.LeaveOut(drill, value);
    } else if (value.Text() == "oval") {
      oval = true;
    } else {
      sizes.push_back(Size(value));
    }
  }
  if (sizes.empty()) return;
  style.drillWidth.value = sizes[0];
  if (!oval || sizes.size() < 2 || sizes[0] == sizes[1]) return;
  style.drillShape.value = EDrillShape::Slot;
  style.drillLength.value = sizes[1];
}

/// (chamfer top_left ...) with all four of them.
bool HasAllCorners(CSNode chamfer) {
  std::set<std::string_view> corners;
  if (!chamfer) return false;
  for (const CSNode word : chamfer) corners.insert(word.Text());
  return corners == std::set<std::string_view>{"top_left", "top_right", "bottom_left", "bottom_right"};
}

/// Settles what the shapes have in common: equal sides, dimensions without use.
void Simplify(SPadStyleFields& style) {
  const bool isEven = style.size == style.length;
  const bool isCornered =
      style.shape.value == EPadShape::RoundedRectangle || style.shape.value == EPadShape::ChamferedRectangle;
  if (isCornered && style.dimension3.value == 0) style.shape.value = EPadShape::Rectangle;
  if (style.shape.value == EPadShape::Rectangle && isEven) style.shape.value = EPadShape::Square;
  if (style.shape.value == EPadShape::Oval && isEven) style.shape.value = EPadShape::Round;
  if (!CPadStyle::HasSecondDimension(style.shape.value)) style.length.value = 0;
  if (!CPadStyle::HasThirdDimension(style.shape.value)) style.dimension3.value = 0;
}
/// An order of the shapes of a symbol: files have them in an order without meaning, which differs between equal ones.
bool IsBefore(const SShapeItemFields& a, const SShapeItemFields& b, const CDesign& design) {
  const auto properties = [&](const SShapeItemFields& shape) {
    return std::tuple(design.GetLayerOrder(shape.layer.Get()), shape.width.value, shape.closed, shape.filled);
  };
  if (properties(a) != properties(b)) return properties(a) < properties(b);
  return std::lexicographical_compare(a.points.begin(), a.points.end(), b.points.begin(), b.points.end(),
                                      [](CPoint p, CPoint q) { return std::tie(p.x, p.y) < std::tie(q.x, q.y); });
}
}  // namespace

struct CComponentReader::SPlacement {
  CPoint position;
  CAngle angle;
  bool isBack = false;
  CString name;
  CString value;
  CString description;
  std::unique_ptr<CSymbol> symbol = std::make_unique<CSymbol>();
  std::unique_ptr<CSymbolInstance> instance = std::make_unique<CSymbolInstance>();
  std::vector<SShapeItemFields> shapes;
  std::vector<std::pair<CNet*, CString>> connected;  // nets with the names of pads

  CPoint Absolute(CSNode node, CPoint relative) const { return Placed(node, relative, angle, position); }
  CPoint InSymbol(CSNode node, CPoint relative) const {
    if (isBack && relative.y == std::numeric_limits<int>::min()) Fault(node, "this lies beyond the range of a design");
    return {relative.x, isBack ? -relative.y : relative.y};
  }
  CAngle InSymbol(CAngle absolute) const {
    const int turned = absolute.GetMilliDegrees() - angle.GetMilliDegrees();
    return Normal(isBack ? -turned : turned);
  }
};

void CComponentReader::Add(CSNode footprint) {
  SPlacement placement;
  const CSNode at = footprint.Find("at"), layer = footprint.Find("layer");
  if (!at || !layer) Fault(footprint, "a footprint needs its place and its layer");
  placement.position = Point(at);
  placement.angle = Angle(at, 2);
  const CLayer* const side = m_context.layers->Find(Word(layer));
  placement.isBack = side && side->GetSide() == ELayerSide::Bottom;

  for (const CSNode value : footprint) {
    const std::string_view tag = value.Tag();
    if (tag == "pad") ReadPad(placement, value);
    else if (tag == "fp_text" || tag == "property") ReadComponentText(placement, value);
    else if (tag == "fp_line" || tag == "fp_rect" || tag == "fp_poly") ReadSymbolShape(placement, value);
    else if (tag == "zone") AddZone(m_context, value);
    else if (tag == "descr") placement.description = Word(value).Text();
    else if (tag != "at" && tag != "layer" && !value.IsQuoted() && value.At() != Word(footprint).At())
      m_context.LeaveOut(footprint, value);
  }

  CDesign& design = m_context.design;
  std::sort(placement.shapes.begin(), placement.shapes.end(),
            [&](const auto& a, const auto& b) { return IsBefore(a, b, design); });
  for (SShapeItemFields& shape : placement.shapes) AddRecord(placement.symbol->Shapes(), std::move(shape));
  CSymbol* const symbol = TakeSymbol(CString(Word(footprint).Text()), std::move(placement.symbol));
  CComponentInstance& component =
      AddRecord(design.componentInstances, {CName{m_context.names.TakeForItem("component", placement.name)},
                                            TakePart(symbol, placement.value, placement.description), 0});
  auto& instance = static_cast<CSymbolInstance&>(component.SymbolInstances().Append(std::move(placement.instance)));
  instance.Set(&SSymbolInstanceFields::symbol, symbol);
  instance.Set(&SSymbolInstanceFields::position, placement.position);
  instance.Set(&SSymbolInstanceFields::angle, placement.angle);
  instance.Set(&SSymbolInstanceFields::side, {placement.isBack ? ELayerSide::Bottom : ELayerSide::Top});
  for (auto& [net, pad] : placement.connected) AddRecord(net->Nodes(), {&component, std::move(pad)});
}

struct CComponentReader::SPadRead {
  CSNode node, at;
  CPoint place;  // in the footprint, as the file has it
  SPadStyleFields style;
  SPadInstanceFields instance;
  std::optional<std::vector<CLayer*>> layers;
};

void CComponentReader::ReadPad(SPlacement& placement, CSNode node) {
  const CSNode type = Word(node, 1), shapeWord = Word(node, 2);
  SPadRead pad;
  pad.node = pad.at = node;
  SPadStyleFields& style = pad.style;
  SPadInstanceFields& instance = pad.instance;
  style.shape.value = ShapeOf(m_context, node, shapeWord);
  instance.name = Word(node, 0).Text();
  CSNode ratio, chamferRatio, chamfer;
  for (const CSNode value : node) {
    const std::string_view tag = value.Tag();
    if (value.IsWord() && value.At() <= shapeWord.At()) continue;
    if (tag == "at") {
      pad.at = value;
      pad.place = Point(value);
      instance.angle = Angle(value, 2);
    } else if (tag == "size") {
      style.size.value = Size(Word(value, 0));
      style.length.value = Size(Word(value, 1));
    } else if (tag == "drill") {
      ReadDrill(m_context, value, style);
    } else if (tag == "layers") {
      pad.layers = m_context.layers->All(value);
    } else if (tag == "net") {
      instance.net = m_context.nets.Find(value).net;
    } else if (tag == "roundrect_rratio") {
      ratio = Word(value);
    } else if (tag == "chamfer_ratio") {
      chamferRatio = value;
    } else if (tag == "chamfer") {
      chamfer = value;
    } else {
      m_context.LeaveOut(node, value);
    }
  }
  const int side = std::min(style.size.value, style.length.value);
  if (ratio) style.dimension3.value = Share(ratio, side);
  if (chamferRatio && HasAllCorners(chamfer)) {  // which leaves none to be rounded
    style.shape.value = EPadShape::ChamferedRectangle;
    style.dimension3.value = Share(Word(chamferRatio), side);
  } else if (chamfer) {
    m_context.LeaveOut(node, chamfer);
  }
  if (pad.layers) {
    std::vector<CLayer*> copper;
    std::copy_if(pad.layers->begin(), pad.layers->end(), std::back_inserter(copper), IsCopper);
    if (copper.empty() && style.drillWidth.value == 0) return AddOpenings(placement, pad);
    instance.side.value = SideOf(copper);
  }
  // A hole that leaves no copper of its pad is drilled bare, whatever the board calls it.
  const bool isBare = style.drillShape.value == EDrillShape::Round && style.drillWidth.value > 0 &&
                      style.drillWidth.value >= std::min(style.size.value, style.length.value);
  style.plated = type.Text() != "np_thru_hole" && !isBare;
  Simplify(style);
  instance.style = m_context.styles.Pad(std::move(style));
  instance.position = placement.Absolute(pad.at, pad.place);
  if (CNet* const net = instance.net.Get()) placement.connected.emplace_back(net, instance.name);
  AddRecord(placement.symbol->Pads(), {instance.name,
                                       instance.style,
                                       placement.InSymbol(pad.at, pad.place),
                                       placement.InSymbol(instance.angle),
                                       {placement.isBack ? OtherSide(instance.side.value) : instance.side.value}});
  AddRecord(placement.instance->PadInstances(), std::move(instance));
}

/// A pad without copper and without a hole is an opening of a mask, or a drawing: a filled shape on each of its layers.
void CComponentReader::AddOpenings(SPlacement& placement, const SPadRead& pad) {
  if (pad.layers->empty()) return m_context.summary.LeaveOutItem("pads on layers that the board lacks");
  m_context.CountCopies(pad.node, pad.layers->size(), 4);
  const int width = pad.style.size.value, height = pad.style.length.value, least = std::min(width, height);
  const int form = pad.style.shape.value;
  const bool isLine = form == EPadShape::Round || form == EPadShape::Oval;
  // A round pen draws the rounding; what it adds at each side is missing from the form.
  SShapeItemFields shape;
  shape.width.value = isLine ? least : form == EPadShape::RoundedRectangle ? 2 * pad.style.dimension3.value : 0;
  shape.closed = shape.filled = !isLine;
  const int x = (width - shape.width.value) / 2, y = (height - shape.width.value) / 2;
  shape.points = isLine ? CPoints{{-x, -y}, {x, y}} : CPoints{{-x, -y}, {x, -y}, {x, y}, {-x, y}};
  const CAngle turn = Normal(pad.instance.angle.GetMilliDegrees() - placement.angle.GetMilliDegrees());
  for (CPoint& point : shape.points) point = placement.InSymbol(pad.at, Placed(pad.at, point, turn, pad.place));
  for (CLayer* const layer : *pad.layers) {
    shape.layer = layer;
    AddSymbolShape(placement, shape);
  }
}

void CComponentReader::ReadComponentText(SPlacement& placement, CSNode node) {
  const CSNode kind = Word(node, 0), words = Word(node, 1);
  if (EqualNoCase(kind.Text(), "reference")) placement.name = words.Text();
  if (EqualNoCase(kind.Text(), "value")) placement.value = words.Text();
  const SBoardText text = ReadText(m_context, node, 2);
  if (!text.at) return m_context.summary.LeaveOutWord("property without a place");
  if (!text.layer) return m_context.summary.LeaveOutItem("texts on layers that the board lacks");
  AddRecord(placement.instance->ValuePositions(),
            {CString(words.Text()), text.style, text.layer, placement.Absolute(text.at, text.position), text.angle,
             !text.hidden});
}

void CComponentReader::ReadSymbolShape(SPlacement& placement, CSNode node) {
  for (SShapeItemFields& shape : ReadShapes(m_context, node)) {
    for (CPoint& point : shape.points) point = placement.InSymbol(node, point);
    AddSymbolShape(placement, std::move(shape));
  }
}

/// Adds a shape whose points are those of the symbol, while its layer is that of the placed footprint.
void CComponentReader::AddSymbolShape(SPlacement& placement, SShapeItemFields shape) {
  if (placement.isBack) shape.layer = m_context.layers->Opposite(shape.layer.Get());
  placement.shapes.push_back(std::move(shape));
}

CSymbol* CComponentReader::TakeSymbol(const CString& libraryName, std::unique_ptr<CSymbol> symbol) {
  std::vector<CSymbol*>& known = m_symbols[libraryName];
  for (CSymbol* const one : known) {
    symbol->Set(&SSymbolFields::name, one->Values().name);
    if (symbol->EqualValues(*one)) return one;
  }
  symbol->Set(&SSymbolFields::name, CName{m_context.names.TakeUnlisted("symbol", libraryName)});
  return known.emplace_back(static_cast<CSymbol*>(&m_context.design.symbols.Append(std::move(symbol))));
}

CComponent* CComponentReader::TakePart(CSymbol* symbol, const CString& value, const CString& description) {
  CComponent*& part = m_parts[{symbol, value}];
  if (!part) {
    const CString& name = value.empty() ? symbol->Values().name.text : value;
    part = &AddRecord(m_context.design.components,
                      {CName{m_context.names.TakeUnlisted("part", name)}, symbol, description});
  }
  return part;
}
