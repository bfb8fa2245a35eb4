// What the parts of a board import share: the design that grows, its names, layers, rules, styles and nets.
#pragma once
#include "interchange/boardlayers.h"
#include "interchange/boardnets.h"
#include "interchange/boardrules.h"
#include "interchange/boardstyles.h"
#include "interchange/boardvalues.h"
#include "interchange/newrecord.h"

struct SBoardContext {
  SBoardContext(CPcbDesign& designToFill, CImportSummary& summaryToFill)
      : design(designToFill),
        summary(summaryToFill),
        names(summaryToFill),
        rules(summaryToFill),
        styles(design, names) {}

  CPcbDesign& design;
  CImportSummary& summary;
  CImportNames names;
  CBoardRules rules;
  CBoardStyles styles;
  std::optional<CBoardLayers> layers;
  CBoardNets nets;

  /// Tells of something that has no place in a design: a value of `owner`.
  void LeaveOut(CSNode owner, CSNode value);
  /// The width in a list (width 0.1). Of a negative one the amount counts.
  int Width(CSNode list);
  /// Counts what is made of one item because it stands on `count` layers, at least one: a fault when all of it is more
  /// than any board has.
  void CountCopies(CSNode node, std::size_t count, std::size_t points);

 private:
  std::size_t m_copies = 0;
};

/// A text of any kind, with what it needs in a design.
struct SBoardText {
  CSNode at;        // none: a text without a place
  CPoint position;  // as the file has it
  CAngle angle;
  CLayer* layer = nullptr;  // null: the board lacks the layer
  CTextStyle* style = nullptr;
  bool mirrored = false;
  bool hidden = false;
};
/// Reads the lists of a text; the first `words` values are the caller's.
SBoardText ReadText(SBoardContext& context, CSNode node, std::size_t words);

/// A line, rectangle or polygon, for each layer on which it stands; none on layers that the board lacks.
std::vector<SShapeItemFields> ReadShapes(SBoardContext& context, CSNode node);
/// The points of a list (pts ...). Where an arc stands among them, its ends and its middle.
CPoints ReadPoints(SBoardContext& context, CSNode pts);

/// Adds one track segment, via, zone, text or shape of the board.
void AddBoardItem(SBoardContext& context, CSNode node);
/// Adds an area for each layer of a zone.
void AddZone(SBoardContext& context, CSNode node);
/// Adds a footprint of the board as a component with its symbol, pads and texts.
class CComponentReader {
 public:
  explicit CComponentReader(SBoardContext& context) : m_context(context) {}
  void Add(CSNode footprint);

 private:
  struct SPlacement;
  struct SPadRead;
  void ReadPad(SPlacement& placement, CSNode pad);
  void AddOpenings(SPlacement& placement, const SPadRead& pad);
  void ReadComponentText(SPlacement& placement, CSNode node);
  void ReadSymbolShape(SPlacement& placement, CSNode node);
  void AddSymbolShape(SPlacement& placement, SShapeItemFields shape);
  CSymbol* TakeSymbol(const CString& libraryName, std::unique_ptr<CSymbol> symbol);
  CComponent* TakePart(CSymbol* symbol, const CString& value, const CString& description);

  SBoardContext& m_context;
  std::unordered_map<CString, std::vector<CSymbol*>> m_symbols;  // by the name in the library
  std::map<std::pair<CSymbol*, CString>, CComponent*> m_parts;
};
