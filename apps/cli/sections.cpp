#include "cli/sections.h"

#include <algorithm>

#include "cli/texttable.h"
#include "model/design/design.h"
#include "model/design/fieldtext.h"
#include "storage/designfile.h"

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
    if (field.type->IsReference()) records.insert(field.As<CRefBase>(defaults.FieldsAddress()).target);
  return records;
}

std::vector<SSectionCount> CountSections(const std::vector<SSection>& sections, const CTechnology& technology) {
  const std::set<const CRecordBase*> defaults = DefaultsOf(technology);
  std::vector<SSectionCount> counts;
  for (const SSection& section : sections) {
    if (section.single) continue;
    SSectionCount& count = counts.emplace_back(SSectionCount{section.name});
    for (const SSection::SRow& row : section.Rows()) {
      ++count.count;
      count.builtIn += row.record->IsBuiltIn();
      count.defaults += defaults.contains(row.record);
    }
  }
  return counts;
}

CString CellText(const CField& field, const CRecordBase& record, const CUnits& units) {
  const CString text = FieldText(field, record, units);
  return text.empty() && field.type->IsReference() ? CString("-") : VisibleText(text, true);
}

void WriteField(CJsonWriter& json, const CField& field, const CRecordBase& record, const CUnits& units) {
  const auto writeValue = [&] {
    if (field.shown) {
      json.Integer(ShownNumber(field, record));
    } else {
      json.Raw(FieldJson(field, record));
    }
  };
  if (!IsTextTelling(*field.type)) return writeValue();
  json.Object([&] {
    json.Key("value");
    writeValue();
    json.Key("text").Text(FieldText(field, record, units));
  });
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
