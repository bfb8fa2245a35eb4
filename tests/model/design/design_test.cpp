#include "model/design/design.h"

#include <gtest/gtest.h>

#include <limits>

#include "model/base/catalogue.h"
#include "model/services/apperror.h"
#include "support/failingmemory.h"
#include "support/snapshot.h"

namespace {

class DesignTest : public ::testing::Test {
 protected:
  /// One step of that identifier.
  void Step(unsigned id) {
    design.StartNestedUndoLevel(id);
    design.SetName(design.GetName() + "x");
    design.EndNestedUndoLevel(id);
  }
  template <class T>
  T* Place(CCollection<T>& items, CLayer* layer) {
    T item;
    item.Set(&T::Fields::layer, layer);
    return items.Add(item);
  }

  CPcbDesign design;
};

TEST_F(DesignTest, StartsWithTheDefaultTechnologyOfItsKind) {
  struct SCase {
    const char* kind;
    const char* extension;
    const char* technology;  // extension of technology files: libraries use those of what they hold
    const char* layers;
  };
  const CString pcb = "[All layers] usage 1 side 3 bias 1;Top usage 2 side 0 bias 3;Bottom usage 2 side 1 bias 3;";
  const SCase cases[] = {{"CPcbDesign", "tspcb", "tspcbt", pcb.c_str()},
                         {"CPcbSymDesign", "tsfpt", "tsfptt", pcb.c_str()},
                         {"CPcbSymbolLibrary", "tspcblib", "tsfptt", pcb.c_str()},
                         {"CScmDesign", "tsscm", "tsscmt", ""},
                         {"CScmSymDesign", "tssym", "tssymt", ""},
                         {"CProject", "tsprj", "tsprjt", ""},
                         {"CScmSymbolLibrary", "tsscmlib", "tssymt", ""}};
  for (const SCase& c : cases) {
    const std::unique_ptr<CTechnology> made = MakeTechnology(c.kind, EContent::DefaultTechnology);
    ASSERT_TRUE(made) << c.kind;
    EXPECT_EQ(CDesign::GetFileExtension(made->GetRuntimeClass()), c.extension);
    EXPECT_EQ(CDesign::GetTechnologyFileExtension(made->GetRuntimeClass()), c.technology);
    CString layers;
    for (const CLayer& one : made->layers)
      layers += one.GetName() + " usage " + IntText(one.GetUsage()) + " side " + IntText(one.GetSide()) + " bias " +
                IntText(one.GetBias()) + ";";
    EXPECT_EQ(layers, c.layers) << c.kind;
    EXPECT_EQ(made->FindLayer(1, 3, 1, nullptr), made->FindBuiltInLayer()) << c.kind;
    EXPECT_TRUE(made->FindNetClass("Default") && made->FindPadStyle("Default") && made->FindTrackStyle("Default") &&
                made->FindTextStyle("Default") && made->FindLineStyle("Default") &&
                made->FindTextStyle("[Drill Table]"));
    EXPECT_EQ(made->DsuToString(1'234'567, false), "1.235") << c.kind;
    made->SwitchUnits();
    EXPECT_EQ(made->DsuToString(1'234'567, false), "48.61") << c.kind;
    const CDesign* const one = DynamicDowncast<CDesign>(made.get());
    EXPECT_TRUE(!one || one->CheckValid().empty()) << c.kind;
  }
  EXPECT_EQ(TechnologyClassNames().size(), std::size(cases));
  EXPECT_FALSE(design.Undo());  // nothing of that is a step
  EXPECT_FALSE(design.GetChanged());
}

TEST_F(DesignTest, ChangesOutsideLevelsAreStepsOfTheirCommand) {
  {
    const CCommandScope outer(&design, "Outer");
    design.SetName("a");
    {
      const CCommandScope inner(&design, "Inner");
      design.SetName("b");
      EXPECT_FALSE(design.InUndoLevel());
    }
    design.SetName("c");
    Step(7030);
    design.SetName("d");
  }
  design.SetName("e");
  CString steps;
  design.Undo();
  for (const CUndoJournal::SStep& step : design.Journal().Steps())
    steps += IntText(step.id) + CString(step.command) + " ";
  EXPECT_EQ(steps, "0Outer 0Inner 0Outer 7030 0Outer 0 ");
  CString names = design.GetName();
  while (design.Undo()) names += "," + design.GetName();
  EXPECT_EQ(names, "d,cx,c,b,a,");
}

TEST_F(DesignTest, ALevelEndsWithItsScopeWhateverHappensInside) {
  CString log;
  const CAppError::CLog before = CAppError::InstallLog([&](const CString& text) { log += text + '\n'; });
  try {
    const CUndoLevel level(design, 7357);
    design.SetName("a");
    design.EndNestedUndoLevel(7030);
    design.UndoNestedLevel(7030);
    design.StartNestedUndoLevel(7031);
    design.SetName("b");
    throw 1;
  } catch (int) {
  }
  design.EndNestedUndoLevel(7357);
  CAppError::InstallLog(before);
  const CString wrong = "The undo level 7030 was to end, but the innermost open one is 7357. Neither has ended.\n";
  EXPECT_EQ(log, wrong + wrong + "The undo level 7031 was left open, and has ended with 7357.\n" +
                     "The undo level 7357 was to end, but the innermost open one is 0. Neither has ended.\n");
  EXPECT_EQ(design.GetName(), "b");
  EXPECT_TRUE(design.Undo());
  EXPECT_EQ(design.GetName(), "");
  {
    CUndoLevel level(design, 7357);
    design.SetName("c");
    level.Revert();
  }
  EXPECT_EQ(design.GetName(), "");
  EXPECT_TRUE(design.Redo());
}

/// Every allocation of every edit fails once: nothing has happened then. Taking edits back needs no memory.
void EditWithoutMemory(int first) {
  CPcbDesign design;
  const CString suffix(40, 'x');
  CTrackStyle* const moved = design.AddTrackStyle("moved" + suffix, 1);
  CTrackStyle* last = nullptr;
  const auto edit = [&](int number) {
    switch (number % 5) {
      case 0: last = design.AddTrackStyle(IntText(number) + suffix, number + 1); break;
      case 1: moved->SetName(number % 2 ? CString() : IntText(number) + suffix); break;
      case 2: design.trackStyles.SetPlace(*moved, static_cast<std::size_t>(number) % design.trackStyles.Count()); break;
      case 3: design.netClasses.Append(design.netClasses.First()->Clone()); break;
      default: design.DeleteTrackStyle(last); break;
    }
  };
  edit(0);
  for (int number = first; number < first + 40; ++number) {
    design.Journal().EndImplicitStep();
    const CString before = SnapshotOf(design);
    for (std::size_t left = 0;; ++left) {
      try {
        const CFailingMemory memory(left);
        edit(number);
        break;
      } catch (const std::bad_alloc&) {
      }
      ASSERT_EQ(SnapshotOf(design), before) << number << ", " << left;
    }
    const CString after = SnapshotOf(design);
    if (after == before) continue;  // moved to where it stood
    for (const CString* const wanted : {&before, &after}) {
      bool done = false;
      {
        const CFailingMemory memory(0);
        done = wanted == &before ? design.Undo() : design.Redo();
      }
      ASSERT_TRUE(done) << number;
      ASSERT_EQ(SnapshotOf(design), *wanted) << number;
    }
  }
}

TEST(DesignMemoryTest, WithoutMemoryNothingChangesAndEverythingCanBeTakenBack) {
  for (const int first : {0, 1, 2, 3, 4}) EditWithoutMemory(first);  // for each kind of edit the journal grows once
}

TEST_F(DesignTest, FlagsOfViewAreStepsInsideALevelOnly) {
  CLayer* const top = design.FindLayer("Top");
  const auto toggle = [&] {
    top->SetDisplayed(!top->GetDisplayed());
    top->SetVisiblePlane(false);
    design.Colours().SetVisible(CDesignColours::kGridItem, !design.Colours().GetVisible(CDesignColours::kGridItem));
  };
  toggle();
  EXPECT_FALSE(design.GetChanged());
  EXPECT_FALSE(design.Undo());
  const CString before = SnapshotOf(design);
  design.StartUndoLevel(7357);
  toggle();
  design.EndUndoLevel();
  const CString after = SnapshotOf(design);
  EXPECT_NE(after, before);
  EXPECT_TRUE(design.GetChanged());
  EXPECT_TRUE(design.Undo());
  EXPECT_EQ(SnapshotOf(design), before);
  EXPECT_TRUE(design.Redo());
  EXPECT_EQ(SnapshotOf(design), after);
}

TEST_F(DesignTest, DeletingAUsedLayerTakesWhatStandsOnItAlong) {
  CLayerType type;
  type.SetName("Inner");
  CLayer* const layer = design.AddLayer("L2", design.AddLayerType(&type), ELayerSide::Inner, ELayerBias::Any, nullptr);
  CLayer* const other = design.AddLayer("L3", nullptr, ELayerSide::Inner, ELayerBias::Any, nullptr);
  CPadStyleException exception;
  for (CLayer* const one : {other, layer}) {
    exception.SetLayer(one);
    design.FindPadStyle("Default")->Exceptions().Add(exception);
    Place(design.texts, one);
    Place(design.notes, one);
    CTrack track;
    Place(track.Segments(), one);
    design.AddNet("N" + one->GetName(), nullptr)->Tracks().Add(track);
  }
  const CString apart = SnapshotOf(design);
  CLayerSpan* const span = design.AddLayerSpan("Span", design.FindLayer("Top"), layer);

  EXPECT_FALSE(design.DeleteLayer(layer));
  EXPECT_FALSE(DeleteLayer(&design, layer));
  EXPECT_FALSE(design.DeleteUsedLayer(layer));  // a span ends on it
  EXPECT_FALSE(design.DeleteUsedLayer(design.FindBuiltInLayer()));
  EXPECT_FALSE(DeleteLayer(&design, design.FindBuiltInLayer()));  // though unused
  CStringArray uses;
  design.GetLayerUsed(layer, uses);
  EXPECT_EQ(uses,
            (CStringArray{"Layer span \"Span\"", "Note: 1", "Pad style exception: 1", "Text: 1", "Track segment: 1"}));
  EXPECT_TRUE(design.DeleteLayerSpan(span));
  EXPECT_EQ(SnapshotOf(design), apart);

  design.StartNestedUndoLevel(7357);
  EXPECT_TRUE(design.DeleteUsedLayer(layer));
  design.EndNestedUndoLevel(7357);
  EXPECT_EQ(design.texts.Count() + design.notes.Count(), 2u);
  EXPECT_EQ(design.FindPadStyle("Default")->Exceptions().Count(), 1u);
  EXPECT_EQ(design.FindNet("NL2")->Tracks().First()->Segments().Count(), 0u);
  EXPECT_FALSE(design.IsLayerTypeUsed(design.FindLayerType("Inner")));
  EXPECT_TRUE(design.IsLayerUsed(other));
  EXPECT_EQ(design.CheckValid(), CStringArray());
  design.Undo();
  EXPECT_EQ(SnapshotOf(design), apart);
}

TEST_F(DesignTest, WhatIsReferredToStaysAndANetIsUsedWhileItConnects) {
  CTrackStyle* const style = design.FindTrackStyle("Default");
  EXPECT_TRUE(design.IsTrackStyleUsed(style));  // by the defaults and the net class
  EXPECT_FALSE(design.DeleteTrackStyle(style));
  CNet* const net = design.AddNet("GND", design.FindNetClass("Default"));
  EXPECT_FALSE(design.IsNetUsed(net));
  net->Nodes().Add(CNode());
  EXPECT_TRUE(design.IsNetUsed(net));
  EXPECT_FALSE(design.DeleteNet(net));
  CTrackStyle* const wide = design.AddTrackStyle("Wide", 1000);
  design.Merge({{style, wide}});
  EXPECT_TRUE(design.DeleteTrackStyle(style));
  EXPECT_EQ(design.GetDefaults()->GetTrackStyle(), wide);
  EXPECT_EQ(design.FindNetClass("Default")->GetMinimumStyle(), wide);
}

TEST_F(DesignTest, ADeletedNetClassTakesItsSpacingsAlongAndItsNetsFallBack) {
  CNetClass* const standard = design.FindNetClass("Default");
  CNetClass named;
  named.SetName("Power");
  CNetClass* const power = design.AddNetClass(&named);
  CSpacing spacing;
  for (const auto& [first, second] : {std::pair{power, standard}, {standard, power}, {standard, standard}}) {
    spacing.Set(&SSpacingFields::first, first);
    spacing.Set(&SSpacingFields::second, second);
    design.AddSpacing(&spacing);
  }
  EXPECT_FALSE(design.IsNetClassUsed(power));  // spacings are no use
  design.AddNet("GND", power)->Nodes().Add(CNode());
  design.AddNet("A", standard);
  EXPECT_TRUE(design.IsNetClassUsed(power));
  design.Journal().EndImplicitStep();
  const CString before = SnapshotOf(design);

  EXPECT_FALSE(design.KeeperOf(*power));
  EXPECT_FALSE(design.DeleteNetClass(standard));
  EXPECT_FALSE(design.DeleteUsedRecord(*standard));
  EXPECT_EQ(SnapshotOf(design), before);
  EXPECT_TRUE(design.DeleteNetClass(power));
  EXPECT_EQ(design.FindNet("GND")->GetNetClass(), standard);
  EXPECT_EQ(design.spacings.Count(), 1u);
  EXPECT_EQ(standard->UseCount(), 3);  // both nets and the defaults
  const CString after = SnapshotOf(design);
  design.Undo();
  EXPECT_EQ(SnapshotOf(design), before);
  design.Redo();
  EXPECT_EQ(SnapshotOf(design), after);

  design.GetDefaults()->Set(&SDefaultsFields::netClass, nullptr);
  EXPECT_TRUE(design.DeleteNetClass(standard));
  EXPECT_TRUE(!design.FindNet("GND")->GetNetClass() && design.spacings.Count() == 0);
}

TEST_F(DesignTest, DefaultLayerOrderIsTheStackAndStable) {
  struct {
    const char* name;
    int side;
  } const layers[] = {{"Doc", 3}, {"B2", 1}, {"In1", 2}, {"T2", 0}, {"Odd", 9}, {"In2", 2}};
  for (const auto& [name, side] : layers) design.AddLayer(name, nullptr, side, ELayerBias::None, nullptr);
  design.SetLayerInOrder(design.FindBuiltInLayer(), 99);
  design.SetDefaultLayerOrder();
  CString order;
  for (const CLayer& one : design.layers) order += one.GetName() + " ";
  EXPECT_EQ(order, "[All layers] Top T2 In1 In2 Bottom B2 Doc Odd ");
  EXPECT_TRUE(*design.FindLayer("In2") >= *design.FindLayer("In1"));
  EXPECT_FALSE(*design.FindLayer("T2") >= *design.FindLayer("In1"));
  design.Journal().MarkSaved();
  design.SetDefaultLayerOrder();
  EXPECT_FALSE(design.GetChanged());  // a stack in order is left alone
}

TEST_F(DesignTest, AssignmentKeepsTheRecordThatOthersReferTo) {
  CPadStyle* const style = design.FindPadStyle("Default");
  CLayer* const top = design.FindLayer("Top");
  CPadStyle other(*style);
  other.SetName("Other");
  other.SetShape(EPadShape::Oval);
  for (const int size : {100, 200}) {
    CPadStyleException exception;
    exception.SetLayer(top);
    exception.SetSize(size);
    other.Exceptions().Add(exception);
  }
  const CString before = SnapshotOf(design);
  design.Journal().EndImplicitStep();
  *style = other;
  EXPECT_TRUE(style->EqualValues(other));
  EXPECT_EQ(top->UseCount(), 2);  // the copy outside the design does not count
  EXPECT_EQ(design.FindPadStyle("Other"), style);
  EXPECT_EQ(design.GetDefaults()->GetPadStyle(), style);
  other.Exceptions().Remove(*other.Exceptions().First());
  *style = other;
  EXPECT_EQ(top->UseCount(), 1);
  design.Undo();
  EXPECT_EQ(SnapshotOf(design), before);
}

TEST_F(DesignTest, WalksGoThroughWhatAllOwnersOwn) {
  POSITION at = nullptr;
  EXPECT_EQ(design.FirstPad(at), nullptr);
  CString names;
  for (const char* const pads : {"", "ab", "", "c", ""}) {
    CSymbol* const symbol = design.symbols.Add(CSymbol());
    for (const char* pad = pads; *pad; ++pad) symbol->Pads().Add(CPad())->Set(&SPadFields::name, CString(1, *pad));
    CComponentInstance* const component = design.componentInstances.Add(CComponentInstance());
    CSymbolInstance* const instance = *pads ? component->SymbolInstances().Add(CSymbolInstance()) : nullptr;
    if (instance) instance->ValuePositions().Add(CValuePosition())->Set(&SValuePositionFields::value, CString(pads));
  }
  for (const CPad* pad = design.FirstPad(at); pad; pad = design.NextPad(at)) names += pad->Values().name;
  for (CSymbolInstance* one = design.FirstSymbolInstance(at); one; one = design.NextSymbolInstance(at)) {
    POSITION place = nullptr;
    for (const auto* value = one->FirstValuePosition(place); value; value = one->NextValuePosition(place))
      names += value->Values().value;
  }
  EXPECT_EQ(names, "abcabc");
}

TEST_F(DesignTest, AProjectKnowsWhichOfItsDesignsAreOpen) {
  CProject project, other;
  project.designFiles = {"a.tsscm", "b.tspcb", "c.tsscm"};
  auto a = std::make_unique<CScmDesign>();
  CScmDesign late;
  POSITION at = nullptr;
  const auto open = [&](const CDesign* asking) {
    CString names;
    for (CDesign* one = project.FirstNetClassDesign(at, asking); one; one = project.NextNetClassDesign(at, asking))
      names += one->GetName();
    names += "|";
    for (CDesign* one = project.FirstNetDesign("GND", at, asking); one; one = project.NextNetDesign("GND", at, asking))
      names += one->GetName();
    for (const CString& file : project.FilesNotOpen()) names += " " + file;
    return names;
  };
  EXPECT_EQ(open(nullptr), "| a.tsscm b.tspcb c.tsscm");
  a->SetName("A");
  design.SetName("B");
  late.SetName("C");
  for (CDesign* one : std::initializer_list<CDesign*>{a.get(), &design, &late}) one->AddNet("GND", nullptr);
  a->DeleteNet(a->FindNet("GND"));
  project.AddDesign(a.get(), "a.tsscm");
  project.AddDesign(&design, "b.tspcb");
  EXPECT_EQ(open(nullptr), "A|B c.tsscm");
  project.AddDesign(&late, "c.tsscm");
  EXPECT_EQ(open(a.get()), "C|BC");
  EXPECT_EQ(open(&late), "A|B");
  other.AddDesign(&late);
  a.reset();
  EXPECT_EQ(open(nullptr), "|B a.tsscm c.tsscm");
}

TEST_F(DesignTest, ShiftMovesEverythingOrNothing) {
  constexpr int kMost = std::numeric_limits<int>::max();
  EXPECT_TRUE(design.GetExtents().IsEmpty());
  CArea* const area = Place(design.areas, design.FindLayer("Top"));
  area->Set(&SAreaFields::points, {{-10, 0}, {10, 30}});
  CTrackSegment segment;
  segment.Set(&STrackSegmentFields::start, {5, 5});
  segment.Set(&STrackSegmentFields::end, {kMost - 100, 5});
  design.AddNet("A", nullptr)->Tracks().Add(CTrack())->Segments().Add(segment);
  CSymbol symbol;
  symbol.Pads().Add(CPad())->Set(&SPadFields::position, {-5000, -5000});
  design.symbols.Add(symbol);  // its places are relative to where it is put
  EXPECT_EQ(design.GetExtents(), (CBox{-10, 0, kMost - 100, 30}));
  const CString before = SnapshotOf(design);
  EXPECT_FALSE(design.Shift(101, 0));
  EXPECT_EQ(SnapshotOf(design), before);
  EXPECT_TRUE(design.Shift(100, -7));
  EXPECT_EQ(design.GetExtents(), (CBox{90, -7, kMost, 23}));
  EXPECT_EQ(design.symbols.First()->Pads().First()->Values().position, (CPoint{-5000, -5000}));
}

TEST_F(DesignTest, SelectionFollowsWhatIsStillInTheDesign) {
  CSelectionOverview& selection = design.Selection();
  CDimension* const first = Place(design.dimensions, nullptr);
  CDimension* const second = Place(design.dimensions, nullptr);
  CNote* const note = Place(design.notes, nullptr);
  design.Journal().EndImplicitStep();
  for (CDesignItem* const item : std::initializer_list<CDesignItem*>{second, note, first, note}) selection.Add(*item);
  EXPECT_EQ(selection.Items(), (std::vector<CDesignItem*>{second, note, first}));
  EXPECT_FALSE(selection.IsSingleTypeSelected());
  EXPECT_FALSE(selection.AreJustDimensionsSelected());

  design.DeleteRecord(*note);
  EXPECT_TRUE(selection.AreJustDimensionsSelected());
  EXPECT_TRUE(selection.AreSelectedDimensionsCompatibleTypes());
  second->Set(&SPlacedItemFields::type, 2);
  EXPECT_FALSE(selection.AreSelectedDimensionsCompatibleTypes());

  design.Undo();  // the note is back, and can be selected again
  EXPECT_FALSE(note->IsSelected());
  selection.Clear();
  selection.Add(*note);
  EXPECT_EQ(selection.First(), note);
  EXPECT_FALSE(first->IsSelected());
  EXPECT_EQ(selection.Items().size(), 1u);
  EXPECT_FALSE(design.notes.Add(*note)->IsSelected());

  // Parts of what leaves go with it; of many the rest keep their order, whatever leaves and comes back.
  CTrack* const track = design.AddNet("N", nullptr)->Tracks().Add(CTrack());
  std::vector<CDesignItem*> kept{note};
  design.StartNestedUndoLevel(1);
  for (int i = 0; i < 9; ++i) {
    selection.Add(*track->Segments().Add(CTrackSegment()));
    selection.Add(*kept.emplace_back(Place(design.texts, nullptr)));
  }
  design.EndNestedUndoLevel(1);
  track->Owner()->Child(1)->Remove(*track);
  EXPECT_EQ(selection.Items(), kept);
  selection.Add(*first);
  kept.push_back(first);
  EXPECT_EQ(selection.Items(), kept);
  design.Undo();
  EXPECT_EQ(selection.Items(), kept);
  design.Undo();  // the texts are gone, though selected
  EXPECT_EQ(selection.Items(), (std::vector<CDesignItem*>{note, first}));
  design.Redo();
  EXPECT_EQ(selection.First(), note);
  EXPECT_EQ(selection.Items().size(), 2u);
  EXPECT_FALSE(design.texts.First()->IsSelected());
  CPcbDesign other;
  selection.Add(*Place(other.notes, nullptr));
  EXPECT_EQ(selection.Items().size(), 2u);
}

TEST_F(DesignTest, CheckValidNamesWhatIsWrong) {
  CPcbDesign other;
  CLayer* const top = design.FindLayer("Top");
  CPadStyleException* const exception = design.FindPadStyle("Default")->Exceptions().Add(CPadStyleException());
  // Past the doors, which let no such reference in.
  for (CRecordBase* const owner : std::initializer_list<CRecordBase*>{top, exception}) {
    const CField& field = *owner->Kind().FindField(owner == top ? "net" : "layer");
    static_cast<CRefBase*>(field.at(owner->FieldsAddress()))->target =
        owner == top ? static_cast<CRecordBase*>(other.AddNet("GND", nullptr)) : other.FindLayer("Top");
  }
  design.AddTrackStyle("Default", 5);
  design.AddTrackStyle("", 5);
  design.SetLayerInOrder(design.FindBuiltInLayer(), 1);
  EXPECT_EQ(
      design.CheckValid(),
      (CStringArray{"Track style: the name \"Default\" occurs more than once.", "Track style number 3 has no name.",
                    "Layer \"Top\": \"Plane net\" refers to something outside the design.",
                    "Pad style \"Default\", Pad style exception \"Top\": \"Layer\" refers to something outside "
                    "the design.",
                    TextOf(Text::BuiltInLayerNotFirst)}));
  CPcbSymbolLibrary library;
  library.SetLayerInOrder(library.FindBuiltInLayer(), 1);
  EXPECT_EQ(library.CheckValid(), CStringArray{TextOf(Text::BuiltInLayerNotFirst)});
}

TEST_F(DesignTest, ReferencesOutOfTheDesignAreRefused) {
  CPcbDesign other;
  CLayer* const top = design.FindLayer("Top");
  CNet* const net = design.AddNet("A", nullptr);
  CNet* const foreign = other.AddNet("GND", nullptr);
  top->SetNet(net);
  CPadStyle style;
  style.SetName("New");
  CPadStyleException exception;
  exception.SetLayer(other.FindLayer("Top"));
  style.Exceptions().Add(exception);
  EXPECT_DEBUG_DEATH(top->SetNet(foreign), "not in the design");

  const bool asserts = CRecordBase::AssertOnRefusal(false);
  design.Journal().EndImplicitStep();
  const CString before = SnapshotOf(design);
  top->SetNet(foreign);
  EXPECT_EQ(CAppError::GetLastErrorString(),
            "Layer \"Top\": \"Plane net\" cannot refer to Net \"GND\", which is not in this design.");
  EXPECT_EQ(SnapshotOf(design), before);
  CPadStyle* const added = design.AddPadStyle(&style);
  EXPECT_EQ(CAppError::GetLastErrorString(),
            "Pad style \"New\", Pad style exception \"Top\": \"Layer\" cannot refer to Layer \"Top\", which is not in "
            "this design.");
  EXPECT_EQ(added->Exceptions().First()->GetLayer(), nullptr);
  const auto out = other.FindNet("GND")->Clone();
  CLayer layer(*top);
  layer.SetNet(static_cast<CNet*>(out.get()));  // outside every design, as a draft may be
  EXPECT_FALSE(design.AddLayer(&layer)->GetNet());
  CRecordBase::AssertOnRefusal(asserts);
  CAppError::SetLastError(0);
  EXPECT_EQ(foreign->UseCount() + other.FindLayer("Top")->UseCount(), 0);
  design.Undo();
  EXPECT_EQ(SnapshotOf(design), before);
}

TEST(LengthTest, AUnitBehindANumberHoldsBeforeThatOfTheDesign) {
  for (int type = 0; type < CUnits::kTypes; ++type) {
    int dsu = 0;
    EXPECT_TRUE(ReadLength(CString("1 ") + CUnits::Suffix(type), (type + 1) % CUnits::kTypes, dsu));
    EXPECT_EQ(LengthText(dsu, CUnits(type, 2), true), "1");
    EXPECT_TRUE(ReadPlainLength("1", type, dsu));
    EXPECT_EQ(LengthText(dsu, CUnits(type, 0), false), "1");
  }
}

TEST(LengthTest, RealNumbersEndAtTheRangeOfADesign) {
  EXPECT_EQ(CTechnology::DsuFromUserUnits(1e300, EUnitType::Inch), std::numeric_limits<int>::max());
  EXPECT_EQ(CTechnology::DsuFromUserUnits(-0.0000005, EUnitType::Millimetre), -1);
  EXPECT_EQ(CTechnology::ThouToDsu(-100'000'000), std::numeric_limits<int>::min());
}

}  // namespace
