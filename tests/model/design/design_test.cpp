#include "model/design/design.h"

#include <gtest/gtest.h>

#include <limits>

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
    const char* layers;
  };
  const CString pcb = "[All layers] usage 1 side 3 bias 1;Top usage 2 side 0 bias 3;Bottom usage 2 side 1 bias 3;";
  const SCase cases[] = {{"CPcbDesign", "tspcb", pcb.c_str()},
                         {"CPcbSymDesign", "tsfpt", pcb.c_str()},
                         {"CPcbSymbolLibrary", "tspcblib", pcb.c_str()},
                         {"CScmDesign", "tsscm", ""},
                         {"CScmSymDesign", "tssym", ""},
                         {"CProject", "tsprj", ""},
                         {"CScmSymbolLibrary", "tsscmlib", ""}};
  for (const SCase& c : cases) {
    const std::unique_ptr<CTechnology> made = MakeTechnology(c.kind, EContent::DefaultTechnology);
    ASSERT_TRUE(made) << c.kind;
    EXPECT_EQ(CDesign::GetFileExtension(made->GetRuntimeClass()), c.extension);
    EXPECT_EQ(CDesign::GetTechnologyFileExtension(made->GetRuntimeClass()), CString(c.extension) + "t");
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
  for (const CUndoJournal::SStep& step : design.Journal().Steps()) steps += IntText(step.id) + step.command + " ";
  EXPECT_EQ(steps, "0Outer 0Inner 0Outer 7030 0Outer 0 ");
  CString names = design.GetName();
  while (design.Undo()) names += "," + design.GetName();
  EXPECT_EQ(names, "d,cx,c,b,a,");
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
}

TEST_F(DesignTest, CheckValidNamesWhatIsWrong) {
  CPcbDesign other;
  design.FindLayer("Top")->SetNet(other.AddNet("GND", nullptr));
  design.AddTrackStyle("Default", 5);
  design.SetLayerInOrder(design.FindBuiltInLayer(), 1);
  EXPECT_EQ(design.CheckValid(), (CStringArray{"Track style: the name \"Default\" occurs more than once.",
                                               "Layer \"Top\": \"net\" refers to something outside the design.",
                                               "The design must hold exactly one built-in layer, and hold it first."}));
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
