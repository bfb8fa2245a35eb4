#include "model/design/design.h"

#include <algorithm>

#include "model/design/fieldtext.h"
#include "model/design/fieldtypes.h"
#include "model/services/apperror.h"

namespace {
constexpr CField kValuesFields[] = {
    Field<&SDesignValuesFields::name>("name", Text::Name),
    Field<&SDesignValuesFields::styleSheet>("styleSheet", Text::StyleSheet),
    Field<&SDesignValuesFields::barringChar>("barringChar", Text::BarringCharacter),
    Field<&SDesignValuesFields::font>("font", Text::Font),
    Field<&SDesignValuesFields::keepStyleSizes>("keepStyleSizes", Text::KeepStyleSizes),
    Field<&SDesignValuesFields::valueDisplayed>("valueDisplayed", Text::ValueDisplayed),
    Field<&SDesignValuesFields::coordOrigin>("coordOrigin", Text::Origin),
    Field<&SDesignValuesFields::areaFrom>("areaFrom", Text::AreaFrom),
    Field<&SDesignValuesFields::areaTo>("areaTo", Text::AreaTo),
    Field<&SDesignValuesFields::revision>("revision", Text::Revision),
    Field<&SDesignValuesFields::title>("title", Text::Title),
};
}  // namespace

TECHSHEET_DEFINE_SINGLE(CDesignValues, Text::Design, kValuesFields)

CDesign::CDesign() {
  AddSingle("design", m_values);
  AddSingle("colours", m_colours);
#define TECHSHEET_ITEM(Kind, Class, member) AddCollection(member);
#include "model/design/items.def"
#undef TECHSHEET_ITEM
}

void CDesign::SelectedItemLeaves(CDesignItem& item) { m_selection.Remove(item); }

CDesign::~CDesign() {
  Journal().Discard();  // before the collections that its entries point into
  if (m_project) m_project->RemoveDesign(this);
}

void CDesign::SetDesignArea(CPoint from, CPoint to) {
  m_values.Set(&SDesignValuesFields::areaFrom, from);
  m_values.Set(&SDesignValuesFields::areaTo, to);
}

namespace {
/// The places in a design's own coordinates; those of symbols are relative to the symbol.
void ForEachPlaced(const CDesign& design, const std::function<void(CRecordBase&)>& visit) {
  const bool isSymbol =
      design.IsKindOf(CPcbSymDesign::GetThisClass()) || design.IsKindOf(CScmSymDesign::GetThisClass());
  design.ForEachRecord([&](CRecordBase& record) {
    const CRecordBase* top = &record;
    while (top->Owner()) top = top->Owner();
    if (top->Home() && (isSymbol || top->Home() != &design.symbols)) visit(record);
  });
}
}  // namespace

CBox CDesign::GetExtents() const {
  CBox box;
  ForEachPlaced(*this, [&](CRecordBase& record) {
    const bool isPart = record.Owner() && record.Owner()->IsKindOf(CDesignItem::GetThisClass());
    if (const auto* const item = DynamicDowncast<CDesignItem>(&record); item && !isPart)
      box.Include(item->GetBoundingBox());
  });
  return box;
}

bool CDesign::Shift(int dx, int dy) {
  const auto fits = [=](CPoint point) {
    const std::int64_t x = std::int64_t{point.x} + dx;
    const std::int64_t y = std::int64_t{point.y} + dy;
    return x == static_cast<int>(x) && y == static_cast<int>(y);
  };
  bool allFit = true;
  ForEachPlaced(*this, [&](CRecordBase& record) {
    for (const CField& field : record.Kind().fields) allFit &= std::ranges::all_of(PlacesOf(field, record), fits);
  });
  if (!allFit) return false;
  const auto moved = [=](CPoint point) { return CPoint{point.x + dx, point.y + dy}; };
  ForEachPlaced(*this, [&](CRecordBase& record) {
    for (const CField& field : record.Kind().fields) {
      const std::span<const CPoint> places = PlacesOf(field, record);
      if (places.empty()) continue;
      CPoints points(places.begin(), places.end());
      std::ranges::transform(points, points.begin(), moved);
      StorePlaces(field, record, points);
    }
  });
  return true;
}

bool CDesign::MakeCurrentGrid(CGrid* grid) {
  CGrid* const before = GetWorkingGrid();
  if (!grid || grid == before) return false;
  if (before) before->Set(&SGridFields::working, false);
  grid->Set(&SGridFields::working, true);
  return true;
}

CGrid* CDesign::GetWorkingGrid() const {
  const auto at = std::find_if(grids.begin(), grids.end(), [](const CGrid& grid) { return grid.Values().working; });
  return at == grids.end() ? nullptr : &*at;
}

CGrid* CDesign::GetScreenGrid() const {
  const auto at = std::find_if(grids.begin(), grids.end(), [](const CGrid& grid) { return grid.Values().screen; });
  return at == grids.end() ? nullptr : &*at;
}

namespace {
CString LevelText(unsigned id) { return IntText(static_cast<std::int64_t>(id)); }

void LogNotInnermost(const CUndoJournal& journal, unsigned id) {
  CAppError::Log(Text::LevelNotInnermost, LevelText(id), LevelText(journal.Innermost()));
}
}  // namespace

void CDesign::EndNestedUndoLevel(unsigned id) {
  if (!Journal().End(id)) LogNotInnermost(Journal(), id);
}

void CDesign::UndoNestedLevel(unsigned id) {
  if (!Journal().Revert(id)) LogNotInnermost(Journal(), id);
}

CUndoLevel::CUndoLevel(CTechnology& design, unsigned id)
    : m_journal(design.Journal()), m_id(id), m_outer(m_journal.LevelCount()) {
  m_journal.Start(id);
}

CUndoLevel::~CUndoLevel() {
  if (EndInner()) m_journal.EndInnermost();
}

void CUndoLevel::Revert() {
  if (EndInner()) m_journal.Revert(m_id);
}

bool CUndoLevel::EndInner() {
  while (m_journal.LevelCount() > m_outer + 1) {
    const unsigned left = m_journal.Innermost();
    m_journal.EndInnermost();
    try {
      CAppError::Log(Text::LevelLeftOpen, LevelText(left), LevelText(m_id));
    } catch (const std::bad_alloc&) {
      continue;  // which may be why it was left: it is closed without a word
    }
  }
  return m_journal.LevelCount() > m_outer;
}

void CDesign::EndUndoLevel() {
  if (InUndoLevel()) Journal().EndInnermost();
}

void CDesign::UndoCurrentLevel() {
  if (InUndoLevel()) Journal().Revert(Journal().Innermost());
}

CString CDesign::MakeNetLocalName(const CString& name) { return name.substr(name.rfind('/') + 1); }

bool DeleteLayer(CDesign* design, CLayer* layer) { return !layer->IsBuiltIn() && design->DeleteLayer(layer); }

CCommandScope::CCommandScope(CTechnology* design, const char* command)
    : m_design(design), m_outer(design->Journal().Command()) {
  m_design->Journal().EndImplicitStep();
  m_design->Journal().SetCommand(command);
}

CCommandScope::~CCommandScope() {
  m_design->Journal().EndImplicitStep();
  m_design->Journal().SetCommand(m_outer);
}
