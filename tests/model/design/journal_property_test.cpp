// Random edits of a small design against a model that keeps a copy of every state.
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <sstream>
#include <unordered_map>

#include "model/design/design.h"
#include "support/snapshot.h"

namespace {

constexpr unsigned kIgnoredIds[] = {7026, 0};

/// What undo must do, told by copies: the state after every step, and the state where each open level began.
class CCopies {
 public:
  explicit CCopies(CString state) : m_states{std::move(state)}, m_savedState(m_states[0]), m_present(m_states[0]) {}

  const CString& Present() const { return m_present; }
  bool InLevel() const { return !m_levels.empty(); }
  unsigned Innermost() const { return m_levels.empty() ? 0 : m_levels.back().id; }
  std::size_t Steps() const { return m_ids.size(); }

  void Changed(CString state) {
    m_noted += state != m_present;
    m_present = std::move(state);
  }
  void EndImplicit() {
    if (!InLevel()) Commit(0);
  }
  void Start(unsigned id) {
    EndImplicit();
    m_levels.push_back({id, m_present, m_noted});
  }
  bool End(unsigned id) {
    if (!InLevel() || Innermost() != id) return false;
    m_levels.pop_back();
    if (!InLevel()) Commit(id);
    return true;
  }
  bool Revert(unsigned id) {
    if (!InLevel() || Innermost() != id) return false;
    m_present = m_levels.back().state;
    m_noted = m_levels.back().noted;
    if (m_savedInside > m_noted) LoseSaved(m_levels.front().id);
    m_levels.pop_back();
    return true;
  }
  bool Undo() { return Move(-1); }
  bool Redo() { return Move(1); }
  void Save() {
    EndImplicit();
    m_saved = m_done;
    m_savedInside = m_noted;
    m_lost = m_gone = false;
    m_savedState = m_present;
  }
  bool Reset() {
    EndImplicit();
    if (InLevel()) return false;
    m_lost = IsModified();
    m_gone = Differs();
    m_saved = m_done = 0;
    m_states = {m_present};
    m_ids.clear();
    return true;
  }
  bool IsModified() const {
    const bool open = m_noted != m_savedInside && !IsIgnored(m_levels.empty() ? 0 : m_levels.front().id);
    return m_lost || open || Counts(std::min(m_saved, m_done), std::max(m_saved, m_done));
  }
  bool Differs() const { return m_gone || m_noted != m_savedInside || m_saved != m_done; }
  bool HoldsWhatWasSaved() const { return m_present == m_savedState; }

 private:
  struct SLevel {
    unsigned id;
    CString state;
    unsigned noted;
  };
  void LoseSaved(unsigned id) {
    m_lost |= !IsIgnored(id);
    m_gone = true;
    m_savedInside = 0;
  }
  static bool IsIgnored(unsigned id) { return id == kIgnoredIds[0]; }
  bool Counts(std::size_t from, std::size_t to) const {
    return !std::all_of(m_ids.begin() + static_cast<std::ptrdiff_t>(from),
                        m_ids.begin() + static_cast<std::ptrdiff_t>(to), IsIgnored);
  }
  void Commit(unsigned id) {
    if (m_noted == 0) return;
    const bool savedInside = m_savedInside > 0;
    if (savedInside && m_savedInside != m_noted) LoseSaved(id);
    if (m_saved > m_done) {
      m_lost |= Counts(m_done, m_saved);
      m_gone = true;
      m_saved = m_done;
    }
    m_ids.resize(m_done);
    m_ids.push_back(id);
    m_states.resize(++m_done);
    m_states.push_back(m_present);
    if (savedInside) m_saved = m_done;
    m_noted = m_savedInside = 0;
  }
  bool Move(int by) {
    EndImplicit();
    if (InLevel() || (by < 0 ? m_done == 0 : m_done == Steps())) return false;
    m_done += static_cast<std::size_t>(by);
    m_present = m_states[m_done];
    return true;
  }

  std::vector<CString> m_states;
  std::vector<unsigned> m_ids;
  std::size_t m_done = 0;
  std::size_t m_saved = 0;
  bool m_lost = false;  // the saved state cannot be reached any more, save for steps that do not count
  bool m_gone = false;  // nor can it be reached by such steps
  CString m_savedState;
  std::vector<SLevel> m_levels;
  CString m_present;
  unsigned m_noted = 0;        // changes since the last step ended
  unsigned m_savedInside = 0;  // of them at a save in the middle of a level; 0: saved between steps
};

/// One random operation: which one, and three numbers that say on what.
struct SChance {
  unsigned operation, a, b, c;
  explicit SChance(std::uint32_t bits)
      : operation(bits % 64), a(bits / 64 % 256), b(bits / 64 / 256 % 256), c(bits / 64 / 256 / 256) {}
};

class CWalk {
 public:
  CWalk() : m_copies((Furnish(), m_design.ResetUndoLevels(), m_design.Journal().MarkSaved(), State())) {}

  /// Carries one operation out; the difference to the model, empty when there is none.
  CString Do(SChance chance) {
    m_name = "";
    unsigned weight = 0;
    for (const SOperation& one : Operations()) {
      weight += one.weight;
      if (chance.operation >= weight) continue;
      m_name = one.name;
      m_problem.clear();
      (this->*one.run)(chance);
      if (m_problem.empty()) Compare();
      return m_problem;
    }
    return "no operation";
  }
  const char* Name() const { return m_name; }

  /// Rolls back what is open, then goes back to the first state and forward to the last.
  CString UndoAndRedoAll() {
    while (m_copies.InLevel() && m_problem.empty()) RevertLevel(SChance(0));
    const auto all = [this](void (CWalk::*step)(SChance), bool (CCopies::*model)()) {
      for (CCopies copy = m_copies; m_problem.empty() && (copy.*model)();) {
        (this->*step)(SChance(0));
        if (m_problem.empty()) Compare();
      }
    };
    all(&CWalk::Undo, &CCopies::Undo);
    all(&CWalk::Redo, &CCopies::Redo);
    return m_problem;
  }

 private:
  struct SOperation {
    const char* name;
    unsigned weight;  // of 64
    void (CWalk::*run)(SChance);
  };
  static std::span<const SOperation> Operations();
  static constexpr const char* kNames[] = {"A", "B", "Top", "Default", "Bottom", "[B]", ""};

  static CString NameOf(unsigned c) { return kNames[c % std::size(kNames)]; }
  CString State() const { return SnapshotOf(m_design); }

  void Furnish() {
    CLayerType* const type = m_design.layerTypes.Add([] {
      CLayerType one;
      one.SetName("A");
      return one;
    }());
    CLayer* const inner = m_design.AddLayer("A", type, ELayerSide::Inner, ELayerBias::Any, nullptr);
    m_design.AddLayerSpan("A", m_design.FindLayer("Top"), inner);
    m_design.AddTrackStyle("A", 100);
    CPadStyleException exception;
    exception.SetLayer(inner);
    m_design.FindPadStyle("Default")->Exceptions().Add(exception);
    CNet* const net = m_design.AddNet("A", m_design.FindNetClass("Default"));
    CTrackSegment segment;
    segment.Set(&STrackSegmentFields::layer, inner);
    segment.SetStyle(m_design.FindTrackStyle("A"));
    net->Tracks().Add(CTrack())->Segments().Add(segment);
    CArea area;
    area.Set(&SAreaFields::layer, inner);
    area.Set(&SAreaFields::points, {{0, 0}, {5, 5}});
    m_design.areas.Add(area);
    m_design.grids.Add(CGrid());
  }

  // ---- Choosing
  std::vector<CRecordBase*> Records() const {
    std::vector<CRecordBase*> all;
    m_design.ForEachRecord([&](CRecordBase& record) { all.push_back(&record); });
    return all;
  }
  CRecordBase& AnyRecord(unsigned a) const {
    const std::vector<CRecordBase*> all = Records();
    return *all[a % all.size()];
  }
  /// A record that stands in a collection.
  CRecordBase& AnyMember(unsigned a) const {
    std::vector<CRecordBase*> all = Records();
    std::erase_if(all, [](const CRecordBase* record) { return !record->Home(); });
    return *all[a % all.size()];
  }
  static std::vector<CRecordBase*> OrderOf(const CCollectionBase& home) {
    std::vector<CRecordBase*> order;
    for (CRecordBase* one = home.FirstRecord(); one; one = one->Next()) order.push_back(one);
    return order;
  }
  CRecordBase* AnyTarget(const CKind& kind, unsigned c) const {
    const std::vector<CRecordBase*> order = OrderOf(*m_design.CollectionOf(kind));
    return c % (order.size() + 1) == order.size() ? nullptr : order[c % (order.size() + 1)];
  }
  bool SetAny(CRecordBase& record, unsigned b, unsigned c) const {
    const CField& field = record.Kind().fields[b % record.Kind().fields.size()];
    const int number = static_cast<int>(c % 5);
    const auto set = [&](const auto& value) { return field.set(record, &value); };
    switch (field.type->fieldClass) {
      case EFieldClass::Text: return set(CString(40, static_cast<char>('a' + number)));  // longer than fits inside
      case EFieldClass::Name: return set(CName{NameOf(c)});
      case EFieldClass::Boolean: return set(c % 2 == 0);
      case EFieldClass::Colour: return set(CColour{c % 5});
      case EFieldClass::Point: return set(CPoint{number, -number});
      case EFieldClass::Points: return set(CPoints(c % 4, CPoint{number, 1}));
      case EFieldClass::Angle: return set(CAngle(number));
      case EFieldClass::Flags: return set(CItemFlags(c));
      case EFieldClass::Integer: return set(number);
      case EFieldClass::Length: return set(Dsu{number});
      case EFieldClass::Code: return set(CCode<ELayerSide>{number});
      case EFieldClass::Reference: return set(CRefBase{AnyTarget(*field.type->target(), c)});
    }
    return false;
  }

  // ---- Operations on the design
  void Set(SChance x) { Edited(SetAny(AnyRecord(x.a), x.b, x.c)); }
  void Rename(SChance x) {
    CRecordBase& record = AnyRecord(x.a);
    const CName name{NameOf(x.c)};
    Edited(record.Kind().nameField && record.Kind().nameField->set(record, &name));
  }
  void Refer(SChance x) {  // a field that is a reference, which Set seldom meets
    CRecordBase& record = AnyRecord(x.a);
    bool changed = false;
    for (const CField& field : record.Kind().fields) {
      if (field.type->fieldClass != EFieldClass::Reference) continue;
      const CRefBase target{AnyTarget(*field.type->target(), x.c)};
      changed |= field.set(record, &target);
    }
    Edited(changed);
  }
  void Add(SChance x) {
    CCollectionBase* home = m_design.Collections()[x.a % m_design.Collections().size()];
    if (CCollectionBase* const owned = AnyRecord(x.c).Child(x.b % 5); owned && x.b % 2 == 0) home = owned;
    const std::vector<CRecordBase*> order = OrderOf(*home);
    std::unique_ptr<CRecordBase> record = home->Kind().make();
    for (unsigned i = 0; i < 4; ++i) SetAny(*record, x.b + i, x.c + i);
    const std::size_t place = x.b % (order.size() + 1);
    home->Insert(std::move(record), place == 0 ? nullptr : order[place - 1]);
    Edited(true);
  }
  void Delete(SChance x) { Edited(m_design.DeleteRecord(AnyMember(x.a))); }
  void DeleteUsed(SChance x) { Edited(m_design.DeleteUsedRecord(AnyMember(x.a))); }
  void Move(SChance x) {
    CRecordBase& record = AnyMember(x.a);
    CCollectionBase& home = *record.Home();
    if (x.c % 2 == 0) CheckPlaces(home);  // the numbering is lazy: asking or not asking is part of the game
    std::vector<CRecordBase*> order = OrderOf(home);
    const std::vector<CRecordBase*> before = order;
    std::erase(order, &record);
    const std::size_t place = x.b % (order.size() + 3);
    order.insert(order.begin() + static_cast<std::ptrdiff_t>(std::min(place, order.size())), &record);
    home.SetPlace(record, place);
    if (OrderOf(home) != order) m_problem = "SetPlace put the record elsewhere";
    Edited(order != before);
    if (x.c % 3 == 0) CheckPlaces(home);
  }
  void Arrange(SChance x) {
    CCollectionBase& home = *AnyMember(x.a).Home();
    const std::vector<CRecordBase*> before = OrderOf(home);
    std::vector<CRecordBase*> order = before;
    std::rotate(order.begin(), order.begin() + static_cast<std::ptrdiff_t>(x.b % order.size()), order.end());
    if (x.c % 2 == 0) std::reverse(order.begin(), order.end());
    for (std::size_t place = 0; place < order.size(); ++place) home.SetPlace(*order[place], place);
    if (OrderOf(home) != order) m_problem = "a pass over all places made another order";
    Edited(order != before);
  }
  void DefaultOrder(SChance) {
    m_design.SetDefaultLayerOrder();
    int rank = 0;
    for (const CLayer& layer : m_design.layers) {
      if (StackRank(layer) < rank) m_problem = "layers out of stack order";
      rank = StackRank(layer);
    }
    Edited({});
  }
  void Merge(SChance x) {
    const std::vector<CRecordBase*> order = OrderOf(*AnyMember(x.a).Home());
    CRecordBase* const from = order[x.b % order.size()];
    CRecordBase* const to = order[x.c % order.size()];
    if (from->Owner() || from == to) return;
    m_design.Merge({{from, to}});
    if (from->UseCount() != 0) m_problem = "a reference to a merged record is left";
    Edited({});
  }
  void Assign(SChance x) {
    CRecordBase& record = AnyRecord(x.a);
    if (x.c % 2 == 0 && record.Home()) {
      const std::vector<CRecordBase*> order = OrderOf(*record.Home());
      record.AssignFrom(*order[x.b % order.size()]);
    } else {
      const std::unique_ptr<CRecordBase> draft = record.Clone();
      for (unsigned i = 0; i < 3; ++i) SetAny(*draft, x.b + i, x.c + i);
      if (CCollectionBase* const owned = draft->Child(x.b % 5)) {
        if (x.b % 3 == 0) owned->Append(owned->Kind().make());
        if (x.b % 3 == 1 && owned->FirstRecord()) owned->Remove(*owned->FirstRecord());
      }
      record.AssignFrom(*draft);
      if (!record.EqualValues(*draft)) m_problem = "an assigned record differs from what it was assigned";
    }
    Edited({});
  }
  void View(SChance x) {
    if (!m_copies.InLevel()) return;  // outside a level it is no change of the design
    if (CLayer* const layer = DynamicDowncast<CLayer>(&AnyMember(x.a))) {
      layer->SetDisplayed(x.b % 2 == 0);
      if (!DynamicDowncast<CLayerSpan>(layer)) layer->SetTrueWidth(x.c % 2 == 0);  // spans have no such field
    } else {
      m_design.Colours().SetVisible(static_cast<int>(x.b), x.c % 2 == 0);
    }
    Edited({});
  }
  void Whole(SChance x) {
    switch (x.a % 3) {
      case 0: m_design.SwitchUnits(); break;
      case 1: m_design.Shift(static_cast<int>(x.b), -static_cast<int>(x.c)); break;
      default: m_design.MakeCurrentGrid(m_design.grids.First());
    }
    Edited({});
  }

  // ---- Operations on the journal
  void Command(SChance x) {
    const bool inLevel = m_copies.InLevel();
    {
      CCommandScope scope(&m_design, "Command");
      m_copies.EndImplicit();
      Set(x);
    }
    m_copies.EndImplicit();
    const auto& steps = m_design.Journal().Steps();
    if (!inLevel && m_edited && (steps.empty() || steps.back().command != "Command" || steps.back().id != 0))
      m_problem = "a command's step does not bear its name";
  }
  void StartLevel(SChance x) {
    constexpr unsigned kIds[] = {7357, 7030, kIgnoredIds[0]};
    const unsigned id = kIds[x.a % std::size(kIds)];
    m_design.StartNestedUndoLevel(id);
    m_copies.Start(id);
  }
  void EndLevel(SChance x) {
    const unsigned id = x.a % 8 == 7 ? 4711 : m_copies.Innermost();
    Same(m_design.Journal().End(id), m_copies.End(id), "End");
  }
  void RevertLevel(SChance x) {
    const unsigned id = x.a % 8 == 7 ? 4711 : m_copies.Innermost();
    Same(m_design.Journal().Revert(id), m_copies.Revert(id), "Revert");
  }
  void Undo(SChance) { Same(m_design.Undo(), m_copies.Undo(), "Undo"); }
  void Redo(SChance) { Same(m_design.Redo(), m_copies.Redo(), "Redo"); }
  void Save(SChance) {
    m_design.Journal().MarkSaved();
    m_copies.Save();
  }
  void Reset(SChance) { Same(m_design.Journal().Reset(), m_copies.Reset(), "Reset"); }

  // ---- Comparing
  void Same(bool ours, bool model, const char* what) {
    if (ours != model) m_problem = CString(what) + (ours ? " was done, wrongly" : " was refused, wrongly");
  }
  /// `claimed`: whether the operation says that it changed something.
  void Edited(std::optional<bool> claimed) {
    CString state = State();
    m_edited = state != m_copies.Present();
    if (claimed && *claimed != m_edited) m_problem = "the operation is wrong about whether it changed something";
    m_copies.Changed(std::move(state));
  }
  void CheckPlaces(const CCollectionBase& home) {
    const std::vector<CRecordBase*> order = OrderOf(home);
    for (std::size_t place = order.size(); place-- > 0;)
      if (home.PlaceOf(*order[place]) != place || home.At(place) != order[place]) m_problem = "wrong place";
    if (home.At(order.size())) m_problem = "a place behind the last";
  }
  void Compare() {
    const CString state = State();
    if (state != m_copies.Present()) {
      std::istringstream ours(state);
      std::istringstream model(m_copies.Present());
      for (CString a, b; std::getline(ours, a), std::getline(model, b), ours || model; a.clear(), b.clear())
        if (a != b) m_problem += "is        " + a + "\nshould be " + b + "\n";
      return;
    }
    const CUndoJournal& journal = m_design.Journal();
    if (journal.Revision() < m_revision || (journal.Revision() == m_revision && state != m_seen))
      m_problem = "two states have one revision";
    m_revision = journal.Revision();
    m_seen = state;
    if (journal.IsModified() != m_copies.IsModified()) m_problem = "modified is wrong";
    const bool differs = journal.DiffersFromSave();
    if (differs != m_copies.Differs() || (!differs && !m_copies.HoldsWhatWasSaved())) m_problem = "differs is wrong";
    if (journal.InLevel() != m_copies.InLevel()) m_problem = "the open levels differ";
    if (journal.Steps().size() != m_copies.Steps()) m_problem = "the number of steps differs";

    std::unordered_map<const CRecordBase*, int> uses;
    m_design.ForEachReference([&](CRecordBase&, const CField& field, CRecordBase& target) {
      uses[&target] += field.type->reference != EReference::Part;
    });
    m_design.ForEachRecord([&](CRecordBase& record) {
      const auto at = uses.find(&record);
      if (record.UseCount() != (at == uses.end() ? 0 : at->second)) m_problem = "wrong use count";
      if (at != uses.end()) uses.erase(at);
      for (std::size_t i = 0; const CCollectionBase* child = record.Child(i); ++i) CheckLinks(*child);
    });
    if (!uses.empty()) m_problem = "a reference leaves the design";
    for (const CCollectionBase* collection : m_design.Collections()) {
      CheckLinks(*collection);
      if (!collection->Kind().nameField) continue;
      for (const char* name : kNames) {
        const CRecordBase* one = collection->FirstRecord();
        while (one && (one->RecordName().empty() || one->RecordName() != name)) one = one->Next();  // unnamed: unsought
        if (collection->FindRecord(name) != one) m_problem = "a look-up by name does not find the first of that name";
      }
    }
  }
  void CheckLinks(const CCollectionBase& home) {
    std::size_t count = 0;
    const CRecordBase* previous = nullptr;
    for (const CRecordBase* one = home.FirstRecord(); one; previous = one, one = one->Next(), ++count)
      if (one->Previous() != previous || one->Home() != &home || !one->IsIn()) m_problem = "broken links";
    if (home.LastRecord() != previous || home.Count() != count) m_problem = "broken end of a collection";
  }

  CPcbDesign m_design;
  CCopies m_copies;
  const char* m_name = "";
  CString m_problem;
  bool m_edited = false;
  std::uint64_t m_revision = 0;  // of the journal at the last comparison, with the state then
  CString m_seen;
};

std::span<const CWalk::SOperation> CWalk::Operations() {
  static constexpr SOperation kOperations[] = {
      {"Set", 9, &CWalk::Set},
      {"Rename", 3, &CWalk::Rename},
      {"Refer", 4, &CWalk::Refer},
      {"Add", 6, &CWalk::Add},
      {"Delete", 4, &CWalk::Delete},
      {"DeleteUsed", 3, &CWalk::DeleteUsed},
      {"Move", 9, &CWalk::Move},
      {"Arrange", 3, &CWalk::Arrange},
      {"DefaultOrder", 1, &CWalk::DefaultOrder},
      {"Merge", 1, &CWalk::Merge},
      {"Assign", 3, &CWalk::Assign},
      {"View", 1, &CWalk::View},
      {"Whole", 1, &CWalk::Whole},
      {"Command", 1, &CWalk::Command},
      {"StartLevel", 3, &CWalk::StartLevel},
      {"EndLevel", 2, &CWalk::EndLevel},
      {"RevertLevel", 2, &CWalk::RevertLevel},
      {"Undo", 4, &CWalk::Undo},
      {"Redo", 2, &CWalk::Redo},
      {"Save", 1, &CWalk::Save},
      {"Reset", 1, &CWalk::Reset},
  };
  return kOperations;
}

TEST(JournalPropertyTest, AnySequenceOfEditsIsUndoneAndRedoneExactly) {
  CDesign::SetIgnoreUndo(kIgnoredIds);
  rc::detail::TestParams params = rc::detail::configuration().testParams;
  params.maxSuccess = std::max(params.maxSuccess, 10'000);
  params.maxSize = 50;
  const auto result = rc::detail::checkTestable(
      [] {
        const auto bits = *rc::gen::container<std::vector<std::uint32_t>>(
            rc::gen::resize(rc::kNominalSize, rc::gen::inRange<std::uint32_t>(0, 0xFFFFFFFF)));
        CWalk walk;
        CString trace;
        for (const std::uint32_t one : bits) {
          const CString problem = walk.Do(SChance(one));
          trace += walk.Name();
          trace += ' ';
          if (!problem.empty()) RC_FAIL(trace + "\n" + problem);
        }
        const CString problem = walk.UndoAndRedoAll();
        if (!problem.empty()) RC_FAIL(trace + "UndoAndRedoAll\n" + problem);
      },
      rc::detail::TestMetadata{"JournalPropertyTest", "edits"}, params);
  CDesign::SetIgnoreUndo(nullptr);
  std::ostringstream text;
  rc::detail::printResultMessage(result, text);
  EXPECT_TRUE(result.is<rc::detail::SuccessResult>()) << text.str();
}

}  // namespace
