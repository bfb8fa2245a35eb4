#include "cli/sections.h"

#include <algorithm>

#include "cli/texttable.h"
#include "model/base/decimal.h"
#include "model/design/design.h"

namespace {
/// What people look for first; the rest follows in the order of files.
constexpr std::string_view kFirst[] = {"design",      "units",      "secondaryUnits", "defaults",   "spacingRules",
                                       "layers",      "layerTypes", "layerSpans",     "netClasses", "nets",
                                       "trackStyles", "padStyles",  "textStyles",     "lineStyles", "hatchStyles"};
constexpr std::string_view kTechnology[] = {
#define TECHSHEET_KIND(Kind, Class, member) #member,
#include "model/design/kinds.def"
#undef TECHSHEET_KIND
};

/// Adds the section and those of the collections that its records own.
void AddSections(std::vector<SSection>& sections, const SSection& section) {
  sections.push_back(section);
  const std::unique_ptr<CRecordBase> sample = section.kind->make();
  for (std::size_t i = 0; const CCollectionBase* child = sample->Child(i); ++i) {
    SSection owned{section.name + "." + child->Name(), &child->Kind(), nullptr, section.collection, section.children};
    owned.children.push_back(i);
    AddSections(sections, owned);
  }
}

void AddRows(std::vector<SSection::SRow>& rows, const CCollectionBase& collection, const CString& owner,
             std::span<const std::size_t> children) {
  std::int64_t place = 0;
  for (const CRecordBase* one = collection.FirstRecord(); one; one = one->Next()) {
    ++place;
    if (children.empty()) {
      rows.push_back({one, owner});
      continue;
    }
    CString name = owner.empty() ? CString() : owner + " / ";
    name += one->RecordName().empty() ? IntText(place) : one->RecordName();
    AddRows(rows, *one->Child(children.front()), name, children.subspan(1));
  }
}

CString PointText(CPoint point, const CUnits& units) {
  return LengthText(point.x, units, false) + ", " + LengthText(point.y, units, false);
}

void WritePoint(CJsonWriter& json, CPoint point) {
  json.Array([&] { json.Integer(point.x).Integer(point.y); });
}

std::vector<std::size_t> ClearFlags(const CItemFlags& flags) {
  std::vector<std::size_t> clear;
  for (std::size_t item = 0; item < flags.size(); ++item)
    if (!flags[item]) clear.push_back(item);
  return clear;
}
}  // namespace

bool SSection::IsItem() const {
  return collection &&
         std::find(std::begin(kTechnology), std::end(kTechnology), collection->Name()) == std::end(kTechnology);
}

std::vector<SSection::SRow> SSection::Rows() const {
  std::vector<SRow> rows;
  if (single) rows.push_back({single, {}});
  if (collection) AddRows(rows, *collection, {}, children);
  return rows;
}

std::vector<SSection> SectionsOf(const CTechnology& technology) {
  std::vector<SSection> sections;
  for (const CTechnology::SSingle& single : technology.Singles())
    sections.push_back({single.name, &single.record->Kind(), single.record});
  for (CCollectionBase* collection : technology.Collections())
    AddSections(sections, {collection->Name(), &collection->Kind(), nullptr, collection});
  const auto rank = [](const SSection& section) {
    const std::string_view top = std::string_view(section.name).substr(0, section.name.find('.'));
    return std::find(std::begin(kFirst), std::end(kFirst), top) - std::begin(kFirst);
  };
  std::stable_sort(sections.begin(), sections.end(),
                   [&](const SSection& a, const SSection& b) { return rank(a) < rank(b); });
  return sections;
}

CString CountsText(const std::vector<SSection>& sections, const CTechnology& technology) {
  CTextTable table({{""}, {"", true}, {""}});
  for (const SSectionCount& one : CountSections(sections, technology)) {
    if (one.count == 0) continue;
    const auto depth = static_cast<std::size_t>(std::count(one.name.begin(), one.name.end(), '.'));
    const CString name = CString(2 * depth, ' ') + one.name.substr(one.name.rfind('.') + 1);
    CString marks;
    if (one.builtIn > 0) marks = IntText(static_cast<std::int64_t>(one.builtIn)) + " built-in";
    if (one.defaults > 0)
      marks += (marks.empty() ? "" : ", ") + IntText(static_cast<std::int64_t>(one.defaults)) + " default";
    table.AddRow({name, IntText(static_cast<std::int64_t>(one.count)), marks});
  }
  return table.Text(2);
}

std::set<const CRecordBase*> DefaultsOf(const CTechnology& technology) {
  std::set<const CRecordBase*> records;
  const CDefaults& defaults = *technology.GetDefaults();
  for (const CField& field : defaults.Kind().fields)
    if (field.type->fieldClass == EFieldClass::Reference)
      records.insert(field.As<CRefBase>(defaults.FieldsAddress()).target);
  return records;
}

bool IsBuiltIn(const CRecordBase& record) { return record.RecordName().starts_with('['); }

std::vector<SSectionCount> CountSections(const std::vector<SSection>& sections, const CTechnology& technology) {
  const std::set<const CRecordBase*> defaults = DefaultsOf(technology);
  std::vector<SSectionCount> counts;
  for (const SSection& section : sections) {
    if (section.single) continue;
    SSectionCount& count = counts.emplace_back(SSectionCount{section.name});
    for (const SSection::SRow& row : section.Rows()) {
      ++count.count;
      count.builtIn += IsBuiltIn(*row.record);
      count.defaults += defaults.contains(row.record);
    }
  }
  return counts;
}

namespace {
/// An enumerated value. The usage of a layer is that of its type when it has one, as every check judges it.
int CodeOf(const CField& field, const CRecordBase& record) {
  const auto* const layer = DynamicDowncast<CLayer>(&record);
  if (layer && field.type->choices == &ELayerUsage::Choices) return layer->GetUsage();
  return field.As<int>(record.FieldsAddress());
}
}  // namespace

CString FieldText(const CField& field, const CRecordBase& record, const CUnits& units) {
  const void* const fields = record.FieldsAddress();
  switch (field.type->fieldClass) {
    case EFieldClass::Text: return OneLine(field.As<CString>(fields));
    case EFieldClass::Name: return OneLine(field.As<CName>(fields).text);
    case EFieldClass::Length: return LengthText(field.As<Dsu>(fields).value, units, false);
    case EFieldClass::Integer: return IntText(field.As<int>(fields));
    case EFieldClass::Boolean: return TextOf(field.As<bool>(fields) ? Text::Yes : Text::No);
    case EFieldClass::Colour: return ColourText(field.As<CColour>(fields));
    case EFieldClass::Code: {
      const int value = CodeOf(field, record);
      const CString text = ChoiceText(field.type->choices(), value);
      return text.empty() ? IntText(value) : text;
    }
    case EFieldClass::Reference: {
      const CRecordBase* const target = field.As<CRefBase>(fields).target;
      return target ? OneLine(target->RecordName()) : "-";
    }
    case EFieldClass::Point: return PointText(field.As<CPoint>(fields), units);
    case EFieldClass::Points: {
      const CPoints& points = field.As<CPoints>(fields);
      if (points.size() > 2)
        return TextOf(Text::PointCount, std::vector{IntText(static_cast<std::int64_t>(points.size()))});
      CString text;
      for (const CPoint& point : points) text += (text.empty() ? "" : " to ") + PointText(point, units);
      return text;
    }
    case EFieldClass::Angle: {
      CString text;
      AppendExact(text, field.As<CAngle>(fields).GetMilliDegrees(), 1000);
      return text + "°";
    }
    case EFieldClass::Flags: {
      const std::size_t clear = ClearFlags(field.As<CItemFlags>(fields)).size();
      return clear == 0 ? "all" : "all but " + IntText(static_cast<std::int64_t>(clear));
    }
  }
  return {};
}

void WriteField(CJsonWriter& json, const CField& field, const CRecordBase& record, const CUnits& units) {
  const void* const fields = record.FieldsAddress();
  const auto withText = [&](const auto& write) {
    json.Object([&] {
      json.Key("value");
      write();
      json.Key("text").Text(FieldText(field, record, units));
    });
  };
  switch (field.type->fieldClass) {
    case EFieldClass::Text: json.Text(field.As<CString>(fields)); return;
    case EFieldClass::Name: json.Text(field.As<CName>(fields).text); return;
    case EFieldClass::Colour: json.Text(ColourText(field.As<CColour>(fields))); return;
    case EFieldClass::Integer: json.Integer(field.As<int>(fields)); return;
    case EFieldClass::Boolean: json.Boolean(field.As<bool>(fields)); return;
    case EFieldClass::Length: return withText([&] { json.Integer(field.As<int>(fields)); });
    case EFieldClass::Code: return withText([&] { json.Integer(CodeOf(field, record)); });
    case EFieldClass::Angle: return withText([&] { json.Integer(field.As<CAngle>(fields).GetMilliDegrees()); });
    case EFieldClass::Point: return withText([&] { WritePoint(json, field.As<CPoint>(fields)); });
    case EFieldClass::Points:
      json.Array(field.As<CPoints>(fields), [&](CPoint point) { WritePoint(json, point); });
      return;
    case EFieldClass::Flags:
      json.Array(ClearFlags(field.As<CItemFlags>(fields)),
                 [&](std::size_t item) { json.Integer(static_cast<std::int64_t>(item)); });
      return;
    case EFieldClass::Reference:
      if (const CRecordBase* const target = field.As<CRefBase>(fields).target) {
        json.Text(target->RecordName());
      } else {
        json.Null();
      }
  }
}

CString KindText(const CTechnology& technology) {
  static constexpr std::pair<std::string_view, const char*> kTexts[] = {{"CPcbDesign", "PCB design"},
                                                                        {"CScmDesign", "schematic design"},
                                                                        {"CPcbSymDesign", "footprint"},
                                                                        {"CScmSymDesign", "schematic symbol"},
                                                                        {"CProject", "project"},
                                                                        {"CPcbSymbolLibrary", "footprint library"},
                                                                        {"CScmSymbolLibrary", "symbol library"}};
  const char* const name = technology.GetRuntimeClass()->name;
  const auto at =
      std::find_if(std::begin(kTexts), std::end(kTexts), [&](const auto& text) { return text.first == name; });
  return at == std::end(kTexts) ? name : at->second;
}
