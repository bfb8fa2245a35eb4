#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "bench/table.h"
#include "model/design/design.h"

namespace {

constexpr int kRecords = 10'000;
constexpr int kLoaded = 100'000;
constexpr int kReferences = 1'000'000;

CString Name(const char* what, int number) { return what + IntText(number); }

struct SDesign {
  CPcbDesign design;
  std::vector<CTrackStyle*> styles;
  explicit SDesign(int records) {
    design.Journal().SetRecording(false);
    for (int i = 0; i < records; ++i) styles.push_back(design.AddTrackStyle(Name("Track style ", i), i));
    design.Journal().SetRecording(true);
  }
};

/// What journals are measured by: 32-byte records appended to blocks that are kept.
class CBlockList {
 public:
  struct SEntry {
    void* record;
    int* field;
    std::int64_t old;
    std::int64_t spare;
  };
  void Append(const SEntry& entry) {
    if (m_size == m_blocks.size() * kBlock) m_blocks.push_back(std::make_unique_for_overwrite<SEntry[]>(kBlock));
    m_blocks[m_size / kBlock][m_size % kBlock] = entry;
    ++m_size;
  }
  void Clear() { m_size = 0; }

 private:
  static constexpr std::size_t kBlock = 512;
  std::vector<std::unique_ptr<SEntry[]>> m_blocks;
  std::size_t m_size = 0;
};

void ScalarChange(benchmark::State& state) {
  SDesign on(kRecords);
  int width = kRecords;
  for (auto _ : state) {
    state.PauseTiming();
    on.design.UndoCurrentLevel();
    on.design.StartUndoLevel(1);
    ++width;
    state.ResumeTiming();
    for (CTrackStyle* const style : on.styles) style->SetWidth(width);
  }
}

}  // namespace

void AppendToBlockList(benchmark::State& state, const std::vector<int*>& fields) {
  CBlockList list;
  int width = kRecords;
  for (auto _ : state) {
    state.PauseTiming();
    list.Clear();
    ++width;
    state.ResumeTiming();
    for (int* const field : fields) {
      list.Append({field, field, *field, 0});
      *field = width;
    }
    benchmark::ClobberMemory();
  }
}

namespace {

void BlockListAppend(benchmark::State& state) {
  SDesign on(kRecords);  // the same memory to go through
  std::vector<int*> fields;
  for (CTrackStyle* const style : on.styles)
    fields.push_back(&static_cast<STrackStyleFields*>(style->FieldsAddress())->width.value);
  AppendToBlockList(state, fields);
}

void RollBack(benchmark::State& state) {
  SDesign on(kRecords);
  for (auto _ : state) {
    state.PauseTiming();
    on.design.StartUndoLevel(1);
    for (CTrackStyle* const style : on.styles) style->SetWidth(style->GetWidth() + 1);
    state.ResumeTiming();
    on.design.UndoCurrentLevel();
  }
}

void EmptyLevels(benchmark::State& state, CDesign& design) {
  for (auto _ : state) {
    design.StartNestedUndoLevel(1);
    design.EndNestedUndoLevel(1);
  }
}
void EmptyLevelDeep(benchmark::State& state) {
  SDesign on(10 * kRecords);
  for (unsigned depth = 0; depth < 1000; ++depth) {
    on.design.StartNestedUndoLevel(depth);
    on.styles[depth]->SetWidth(1'000'000);
  }
  EmptyLevels(state, on.design);
}
void EmptyLevelShallow(benchmark::State& state) {
  CPcbDesign design(EContent::Empty);
  design.StartNestedUndoLevel(Text::Technology);
  EmptyLevels(state, design);
}

/// A design whose `kRecords` styles are referred to by `references` segments.
SDesign& ReferredTo(int references) {
  static std::map<int, std::unique_ptr<SDesign>> made;
  std::unique_ptr<SDesign>& on = made[references];
  if (on) return *on;
  on = std::make_unique<SDesign>(kRecords);
  on->design.Journal().SetRecording(false);
  CCollection<CTrackSegment>& segments = on->design.AddNet("N", nullptr)->Tracks().Add(CTrack())->Segments();
  CTrackSegment segment;
  for (int i = 0; i < references; ++i) {
    segment.SetStyle(on->styles[static_cast<std::size_t>(i % kRecords)]);
    segments.Add(segment);
  }
  on->design.Journal().SetRecording(true);
  return *on;
}

template <int kCount>
void InUse(benchmark::State& state) {
  SDesign& on = ReferredTo(kCount);
  for (auto _ : state) {
    int used = 0;
    for (const CTrackStyle* const style : on.styles) used += on.design.IsTrackStyleUsed(style);
    benchmark::DoNotOptimize(used);
  }
}
void ReadField(benchmark::State& state) {
  SDesign& on = ReferredTo(kReferences);
  for (auto _ : state) {
    int sum = 0;
    for (const CTrackStyle* const style : on.styles) sum += style->GetWidth() != 0;
    benchmark::DoNotOptimize(sum);
  }
}

/// Adds segments that refer to styles, as a reader does: to a design, which counts, or to a track of none.
template <bool kCounted>
void Load(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    auto on = std::make_unique<SDesign>(kRecords);
    on->design.Journal().SetRecording(false);
    CTrack loose;
    CTrack* const track = kCounted ? on->design.AddNet("N", nullptr)->Tracks().Add(loose) : &loose;
    state.ResumeTiming();
    for (int i = 0; i < kLoaded; ++i) {
      auto segment = std::make_unique<CTrackSegment>();
      segment->SetStyle(on->styles[static_cast<std::size_t>(i % kRecords)]);
      track->Segments().Append(std::move(segment));
    }
    state.PauseTiming();
    on.reset();
    state.ResumeTiming();
  }
}

void Rename(benchmark::State& state) {
  SDesign on(kRecords);
  std::vector<CString> names[2];
  for (int i = 0; i < kRecords; ++i) {
    names[0].push_back(Name("Track style ", i));
    names[1].push_back(Name("Another style ", i));
  }
  std::size_t turn = 0;
  for (auto _ : state) {
    state.PauseTiming();
    on.design.EndUndoLevel();
    on.design.ResetUndoLevels();
    on.design.StartUndoLevel(1);
    const std::vector<CString>& to = names[++turn % 2];
    state.ResumeTiming();
    for (std::size_t i = 0; i < to.size(); ++i) on.styles[i]->SetName(to[i]);
  }
}
void MapRename(benchmark::State& state) {
  std::vector<CString> names[2];
  std::unordered_map<CString, int> map;
  for (int i = 0; i < kRecords; ++i) {
    names[0].push_back(Name("Track style ", i));
    names[1].push_back(Name("Another style ", i));
    map.emplace(names[0].back(), i);
  }
  std::size_t turn = 0;
  for (auto _ : state) {
    const std::vector<CString>& from = names[turn % 2];
    const std::vector<CString>& to = names[++turn % 2];
    for (std::size_t i = 0; i < to.size(); ++i) {
      map.erase(from[i]);
      map.emplace(to[i], static_cast<int>(i));
    }
  }
}

/// Moves `kRecords` references from all but one of `kStyles` styles.
template <int kStyles>
void Merge(benchmark::State& state) {
  SDesign on(kStyles);
  CCollection<CTrackSegment>& segments = on.design.AddNet("N", nullptr)->Tracks().Add(CTrack())->Segments();
  CTrackSegment segment;
  for (int i = 0; i < kRecords; ++i) {
    segment.SetStyle(on.styles[static_cast<std::size_t>(1 + i % (kStyles - 1))]);
    segments.Add(segment);
  }
  std::map<const CRecordBase*, CRecordBase*> survivors;
  for (std::size_t i = 1; i < on.styles.size(); ++i) survivors[on.styles[i]] = on.styles[0];
  for (auto _ : state) {
    state.PauseTiming();
    on.design.UndoCurrentLevel();
    on.design.StartUndoLevel(1);
    state.ResumeTiming();
    on.design.Merge(survivors);
  }
}

}  // namespace

std::span<const SRow> ModelRows() {
  static const SRow kRows[] = {
      {"Scalar change in an open level / block list", kRecords, ScalarChange, BlockListAppend, 5},
      {"Scalar change in an open level / QUndoStack", kRecords, ScalarChange, QtPeers().changeScalar, 1 / 4.0},
      {"Roll a level back, a change / QUndoStack", kRecords, RollBack, QtPeers().rollBack, 1},
      {"Empty level, depth 1000, 100,000 records / depth 1, none", 1, EmptyLevelDeep, EmptyLevelShallow, 1.3},
      {"In use?, 1,000,000 references / read a field", kRecords, InUse<kReferences>, ReadField, 0, 10},
      {"In use?, 1,000,000 references / none", kRecords, InUse<kReferences>, InUse<0>, 1.3},
      {"Load references, counted / not counted", kLoaded, Load<true>, Load<false>, 3},
      {"Write a name in an open level / unordered_map", kRecords, Rename, MapRename, 1.5},
      {"Merge 100 styles / 2, as many references moved", kRecords, Merge<100>, Merge<2>, 1.3},
  };
  return kRows;
}
