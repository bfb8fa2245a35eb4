#include "model/design/byname.h"

#include <gtest/gtest.h>

#include "model/design/design.h"
#include "support/fulldesign.h"
#include "support/snapshot.h"

namespace {

/// Everything that can cross: what a design holds once, and the records of its collections.
std::vector<const CRecordBase*> RecordsOf(const CTechnology& technology) {
  std::vector<const CRecordBase*> records;
  for (const CTechnology::SSingle& single : technology.Singles()) records.push_back(single.record);
  for (const CCollectionBase* collection : technology.Collections())
    for (const CRecordBase* one = collection->FirstRecord(); one; one = one->Next()) records.push_back(one);
  return records;
}

class EveryKindByName : public ::testing::TestWithParam<CString> {};
INSTANTIATE_TEST_SUITE_P(ByName, EveryKindByName, ::testing::ValuesIn(TechnologyClassNames()),
                         [](const auto& one) { return one.param; });

TEST_P(EveryKindByName, LeavesNothingOfTheOtherDesignBehind) {
  const std::unique_ptr<CTechnology> receiver = MakeTechnology(GetParam(), EContent::DefaultTechnology);
  std::unique_ptr<CTechnology> source = Full(GetParam());
  ChangeEverything(*source);
  const CString before = SnapshotOf(*receiver);
  CCarry carry(EMissing::Bring);
  const std::vector<const CRecordBase*> records = RecordsOf(*source);
  CopyByName(records, *receiver, carry);
  EXPECT_EQ(carry.Problems(), CStringArray());

  std::vector<const CRecordBase*> identified;
  for (const CRecordBase* record : records) {
    const bool isAlone = !record->Kind().make;
    if (!isAlone && IdentityOf(*record).empty()) continue;  // such an item is new each time
    identified.push_back(record);
    const CRecordBase* const found = FindByName(*record, *receiver);
    ASSERT_TRUE(found) << record->Description();
    EXPECT_TRUE(EqualByName(*record, *found)) << record->Description();
  }
  for (const CCollectionBase* collection : source->Collections())
    EXPECT_GE(receiver->CollectionOf(collection->Kind())->Count(), collection->Count()) << collection->Name();
  const std::uint64_t revision = receiver->Journal().Revision();
  CopyByName(identified, *receiver, carry);
  EXPECT_EQ(receiver->Journal().Revision(), revision);

  const CString after = SnapshotOf(*receiver);
  source.reset();
  EXPECT_EQ(receiver->CheckValid(), CStringArray());
  EXPECT_TRUE(receiver->Journal().Undo());
  EXPECT_EQ(SnapshotOf(*receiver), before);
  EXPECT_TRUE(receiver->Journal().Redo());
  EXPECT_EQ(SnapshotOf(*receiver), after);
}

class ByNameTest : public ::testing::Test {
 protected:
  ByNameTest() {
    for (CPcbDesign* const design : {&source, &receiver}) {
      CNetClass named;
      for (const char* name : {"Power", "Audio"}) {
        named.SetName(name);
        design->AddNetClass(&named);
      }
    }
  }
  static CSpacing* AddSpacing(CTechnology& to, const char* first, const char* second, int value) {
    CSpacing spacing;
    spacing.Set(&SSpacingFields::first, to.FindNetClass(first));
    spacing.Set(&SSpacingFields::second, to.FindNetClass(second));
    spacing.Set(&SSpacingFields::value, Dsu{value});
    return to.AddSpacing(&spacing);
  }

  CPcbDesign source, receiver;
};

TEST_F(ByNameTest, WhatIsMissingIsTheCallersRule) {
  // A circle: layer, plane net, class, via style, exception, layer.
  CLayer* const inner = source.AddLayer("Inner", nullptr, ELayerSide::Inner, ELayerBias::Any, nullptr);
  CPadStyle via;
  via.SetName("Via");
  CPadStyleException exception;
  exception.SetLayer(inner);
  exception.SetSize(5);
  via.Exceptions().Add(exception);
  CNetClass* const power = source.FindNetClass("Power");
  power->SetViaStyle(source.AddPadStyle(&via));
  CNet* const ground = source.AddNet("GND", power);
  ground->Vias().Add(CVia());
  inner->SetNet(ground);
  source.FindLayer("Top")->SetNet(ground);

  CLayer* const top = receiver.FindLayer("Top");
  CNet* const old = receiver.AddNet("Old", nullptr);
  top->SetNet(old);
  receiver.Journal().EndImplicitStep();
  struct SCase {
    EMissing missing;
    const char* net;
    std::size_t layers;
    CStringArray problems;
  };
  const SCase cases[] = {
      {EMissing::Leave, "Old", 3, {}},
      {EMissing::Clear, "", 3, {}},
      {EMissing::Report,
       "Old",
       3,
       {"Layer \"Top\": \"Plane net\" refers to Net \"GND\", which the receiving design does not hold."}},
      {EMissing::Bring, "GND", 4, {}},
  };
  const CString before = SnapshotOf(receiver);
  for (const SCase& c : cases) {
    receiver.StartNestedUndoLevel(7357);
    CCarry carry(c.missing);
    AssignByName(*source.FindLayer("Top"), *top, carry);
    EXPECT_EQ(top->GetNet() ? top->GetNet()->GetName() : "", c.net);
    EXPECT_EQ(carry.Problems(), c.problems);
    AddByName(*source.FindPadStyle("Via"), receiver, carry);
    ASSERT_TRUE(receiver.FindPadStyle("Via"));
    EXPECT_EQ(receiver.FindPadStyle("Via")->Exceptions().Count(), c.missing == EMissing::Bring ? 1u : 0u);
    EXPECT_EQ(receiver.layers.Count(), c.layers);
    if (c.missing == EMissing::Bring) {
      EXPECT_EQ(receiver.FindLayer("Inner")->GetNet(), top->GetNet());
      EXPECT_EQ(receiver.FindNetClass("Power")->Values().viaStyle.Get(), nullptr);  // was there, so it is no matter
      EXPECT_EQ(top->GetNet()->Vias().Count(), 0u);
    }
    receiver.UndoNestedLevel(7357);
    EXPECT_EQ(SnapshotOf(receiver), before);
  }
}

TEST_F(ByNameTest, TheReceiverKeepsWhatIsItsOwn) {
  // The working grid, what a net is routed with, and who uses a record.
  CGrid grid;
  grid.Set(&SGridFields::name, CName{"Fine"});
  CGrid* const mine = receiver.AddGrid(&grid);
  mine->Set(&SGridFields::working, true);
  grid.Set(&SGridFields::stepX, Dsu{7});
  grid.Set(&SGridFields::screen, true);
  source.AddGrid(&grid);
  CNet* const net = receiver.AddNet("GND", receiver.FindNetClass("Audio"));
  net->Vias().Add(CVia());
  source.AddNet("GND", source.FindNetClass("Power"))->Tracks().Add(CTrack());
  CSpacing* const spacing = AddSpacing(receiver, "Power", "Audio", 1);
  AddSpacing(source, "Default", "Default", 3);
  AddSpacing(source, "Audio", "Power", 2);  // the same pair
  EXPECT_FALSE(EqualByName(*source.spacings.LastRecord(), *spacing));

  CCarry carry(EMissing::Report);
  const std::vector<const CRecordBase*> records{source.spacings.FirstRecord(), source.spacings.LastRecord(),
                                                source.FindGrid("Fine"), source.FindNet("GND")};
  CopyByName(records, receiver, carry);
  EXPECT_EQ(carry.Problems(), CStringArray());
  EXPECT_EQ(carry.Added(), std::vector<CRecordBase*>{receiver.spacings.LastRecord()});
  EXPECT_TRUE(mine->Values().working && !mine->Values().screen && mine->Values().stepX == Dsu{7});
  EXPECT_TRUE(net->Vias().Count() == 1 && net->Tracks().Count() == 0);
  EXPECT_EQ(net->GetNetClass(), receiver.FindNetClass("Power"));
  EXPECT_EQ(receiver.spacings.Count(), 2u);
  EXPECT_EQ(spacing->Values().first.Get(), receiver.FindNetClass("Power"));
  EXPECT_EQ(spacing->Values().value, Dsu{2});
  for (const CRecordBase* record : records) EXPECT_TRUE(EqualByName(*record, *FindByName(*record, receiver)));

  // A pad style's exceptions become those of the other one, matched by their layers.
  CPadStyle* const from = source.FindPadStyle("Default");
  CPadStyle* const to = receiver.FindPadStyle("Default");
  CPadStyleException exception;
  for (const char* layer : {"Top", "Bottom"}) {
    exception.SetLayer(source.FindLayer(layer));
    exception.SetSize(layer[0]);
    from->Exceptions().Add(exception);
  }
  for (const char* layer : {"[All layers]", "Bottom"}) {
    exception.SetLayer(receiver.FindLayer(layer));
    to->Exceptions().Add(exception);
  }
  const CPadStyleException* const bottom = to->GetException(receiver.FindLayer("Bottom"), false);
  CString differences;
  CompareByName(*from, *to, [&](const SDifference& one) {
    differences += (one.field ? CString(one.field->name) : one.from ? "new" : "gone") + " ";
  });
  EXPECT_EQ(differences, "new gone ");
  AssignByName(*from, *to, carry);
  EXPECT_EQ(to->GetException(receiver.FindLayer("Bottom"), false), bottom);
  EXPECT_EQ(to->GetException(receiver.FindLayer("Top"), false)->Values().size, Dsu{'T'});
  EXPECT_EQ(to->Exceptions().Count(), 2u);
}

}  // namespace
