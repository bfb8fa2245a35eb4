#include "model/design/fieldtext.h"

#include <gtest/gtest.h>

#include "model/design/design.h"

namespace {

template <class Record, class Fields, class T>
CString TextOfField(const Record& record, T Fields::* member) {
  for (const CField& field : record.Kind().fields)
    if (&field.As<char>(record.FieldsAddress()) == static_cast<const void*>(&(record.Values().*member)))
      return FieldText(field, record, CUnits(EUnitType::Millimetre, 2));
  return "no field";
}

TEST(FieldTextTest, PeopleSeeWhatCountsAndWhatIsKept) {
  CPcbDesign design;
  CLayer& layer = *design.FindLayer("Top");
  CLayerType type;
  type.SetName("Ink");
  type.SetUsage(ELayerUsage::Documentation);
  EXPECT_EQ(TextOfField(layer, &SLayerFields::usage), "Electrical");
  layer.SetType(design.layerTypes.Add(type));
  EXPECT_EQ(TextOfField(layer, &SLayerFields::usage), "Documentation");
  layer.SetType(nullptr);
  layer.SetUsage(77);  // of no choice, and nobody may take it for none
  EXPECT_EQ(TextOfField(layer, &SLayerFields::usage), "77");
}

TEST(FieldTextTest, SeveralNumbersAreShort) {
  CShapeItem shape;
  const auto text = [&](const CPoints& points) {
    shape.Set(&SShapeItemFields::points, points);
    return TextOfField(shape, &SShapeItemFields::points);
  };
  EXPECT_EQ(text({}), "0 points");
  EXPECT_EQ(text({{1'000'000, -2'500'000}}), "1.00 / -2.50");
  EXPECT_EQ(text({{0, 0}, {1'000'000, 0}}), "0.00 / 0.00 to 1.00 / 0.00");
  EXPECT_EQ(text({{0, 0}, {1, 0}, {1, 1}}), "3 points");
}

}  // namespace
