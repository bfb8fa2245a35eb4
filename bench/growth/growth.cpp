// The program of the growth test: carries one operation out over as many records as asked, so that its instructions
// can be counted. Without arguments it lists its operations and how they may grow.
#include <cstdio>
#include <string_view>

#include "model/design/design.h"

namespace {

/// As long for any number, and short enough to need no memory of its own: only the number of records shall count.
CString Name(const char* what, int number) { return what + IntText(1'000'000 + number); }

void AddStyles(CPcbDesign& design, int records) {
  for (int i = 0; i < records; ++i) design.AddTrackStyle(Name("Track ", i), i);
}

void AddOnLayer(CPcbDesign& design, int records, CLayer* layer) {
  CPadStyleException exception;
  exception.SetLayer(layer);
  CNote note;
  note.Set(&SPlacedItemFields::layer, layer);
  for (int i = 0; i < records; ++i) {
    design.notes.Add(note);
    if (i % 10 == 0) design.FindPadStyle("Default")->Exceptions().Add(exception);
  }
}

void FindAll(CPcbDesign& design, int records) {
  AddStyles(design, records);
  for (int i = 0; i < records; ++i)
    if (!design.FindTrackStyle(Name("Track ", i))) std::puts("lost");
}

void RenameAll(CPcbDesign& design, int records) {
  AddStyles(design, records);
  int number = 0;
  for (CTrackStyle& style : design.trackStyles) style.SetName(Name("Style ", ++number));
}

/// A writing pass that turns the order round, with the place of every record asked for.
void PutInOrder(CPcbDesign& design, int records) {
  AddStyles(design, records);
  for (std::size_t place = 0; place < design.trackStyles.Count(); ++place) {
    CRecordBase& last = *design.trackStyles.LastRecord();
    design.trackStyles.SetPlace(last, place);
    if (design.trackStyles.PlaceOf(last) != place) std::puts("misplaced");
  }
}

void DeleteAll(CPcbDesign& design, int records) {
  AddStyles(design, records);
  for (CRecordBase* one = design.trackStyles.FirstRecord(); one;) {
    CRecordBase* const next = one->Next();
    design.DeleteRecord(*one);  // the default stays: it is used
    one = next;
  }
}

void UndoAndRedo(CPcbDesign& design, int records) {
  DeleteAll(design, records);
  design.Undo();
  design.Redo();
  design.Undo();
}

void RollBack(CPcbDesign& design, int records) {
  design.StartUndoLevel(1);
  PutInOrder(design, records);
  DeleteAll(design, records);
  design.UndoCurrentLevel();
}

/// Half of the styles goes, and every net class refers to two of them.
void Merge(CPcbDesign& design, int records) {
  AddStyles(design, records);
  std::map<const CRecordBase*, CRecordBase*> survivors;
  CTrackStyle* const survivor = design.trackStyles.First();
  int number = 0;
  for (CTrackStyle& style : design.trackStyles) {
    CNetClass netClass;
    netClass.SetName(Name("Class ", ++number));
    netClass.SetTrackStyles(&style, survivor);
    design.netClasses.Add(netClass);
    if (number % 2 == 0) survivors[&style] = survivor;
  }
  design.Merge(survivors);
  for (const auto& [style, to] : survivors)
    if (!design.DeleteRecord(const_cast<CRecordBase&>(*style))) std::puts("not merged");
}

void DeleteUsedLayer(CPcbDesign& design, int records) {
  CLayer* const layer = design.AddLayer("L2", nullptr, ELayerSide::Inner, ELayerBias::Any, nullptr);
  AddOnLayer(design, records, layer);
  AddOnLayer(design, records, design.FindLayer("Top"));
  if (!design.DeleteUsedLayer(layer)) std::puts("not deleted");
}

struct SOperation {
  const char* name;
  const char* kind;  // how it may grow: linear or sort
  void (*run)(CPcbDesign& design, int records);
};
constexpr SOperation kOperations[] = {
    {"add-records", "linear", AddStyles},
    {"find-by-name", "linear", FindAll},
    {"rename", "linear", RenameAll},
    {"put-in-order", "linear", PutInOrder},
    {"delete", "linear", DeleteAll},
    {"undo-and-redo", "linear", UndoAndRedo},
    {"roll-back", "linear", RollBack},
    {"merge", "linear", Merge},
    {"delete-used-layer", "linear", DeleteUsedLayer},
};

}  // namespace

int main(int argc, char** argv) {
  std::int64_t records = 0;
  for (const SOperation& one : kOperations) {
    if (argc == 1) std::printf("%s %s\n", one.name, one.kind);
    if (argc != 3 || std::string_view(argv[1]) != one.name || !ParseInt(argv[2], records)) continue;
    CPcbDesign design;
    one.run(design, static_cast<int>(records));
    return 0;
  }
  return argc == 1 ? 0 : 1;
}
