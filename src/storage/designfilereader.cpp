#include <simdjson.h>

#include <bitset>
#include <cassert>
#include <limits>
#include <map>

#include "model/base/textfault.h"
#include "model/services/userinterface.h"
#include "storage/designfile.h"

namespace {
namespace json = simdjson::ondemand;

constexpr std::size_t kMaxDepth = 64;
constexpr std::size_t kMaxKeys = 128;  // of one object
constexpr std::size_t kProgressStep = 4 << 20;

using CKeys = std::vector<std::string_view>;

/// What reading a field needs to know beside the field.
struct SFieldPlan {
  const CField* field;
  int least = std::numeric_limits<int>::min();
  int most = std::numeric_limits<int>::max();
  const CCollectionBase* targets = nullptr;  // of a reference; null where this technology holds none
  std::string_view lastName{};               // neighbours often refer to the same record
  CRecordBase* last = nullptr;
};

struct SKindPlan {
  std::vector<SFieldPlan> fields;
  CKeys keys;  // the fields, then the owned collections
};

/// A reference to a record that had not been read yet.
struct SOpenReference {
  CRecordBase* record;
  const SFieldPlan* plan;
  std::string_view name;
  std::size_t at;
};

class CDesignReader {
 public:
  /// Behind `text` there must be room for simdjson's padding.
  CDesignReader(std::string_view text, const CString& name) : m_text(text), m_what("Reading " + name) {}
  ~CDesignReader() {
    if (m_nextProgress > kProgressStep) UserInterface().Progress(m_what, m_text.size(), m_text.size());
  }
  CDesignReader(const CDesignReader&) = delete;
  CDesignReader& operator=(const CDesignReader&) = delete;

  /// Throws STextFault.
  std::unique_ptr<CTechnology> Read() {
    if (m_text.starts_with("\xEF\xBB\xBF")) throw STextFault{0, "a design file begins without a byte order mark"};
    const simdjson::padded_string_view padded(m_text.data(), m_text.size(), m_text.size() + simdjson::SIMDJSON_PADDING);
    simdjson::error_code error = m_parser.allocate(m_text.size(), kMaxDepth);
    if (!error) error = m_parser.iterate(padded).get(m_document);
    if (error) FailWhole(error);
    json::object root;
    error = m_document.get_object().get(root);
    if (error == simdjson::INCORRECT_TYPE) throw STextFault{0, "a design file is one JSON object in braces"};
    if (error) FailWhole(error);
    ReadRoot(root);
    if (!m_document.current_location().error()) throw STextFault{Here(), "nothing may stand behind the closing brace"};
    ResolveOpenReferences();
    const CStringArray problems = m_technology->CheckValid();
    if (!problems.empty()) throw STextFault{0, problems.front().substr(0, problems.front().size() - 1)};
    m_technology->Journal().SetRecording(true);
    return std::move(m_technology);
  }

 private:
  // ---- Faults

  std::size_t OffsetOf(const char* at) const { return static_cast<std::size_t>(at - m_text.data()); }
  std::size_t Here() {
    const char* here = nullptr;
    return m_document.current_location().get(here) ? m_text.size() : OffsetOf(here);
  }
  static std::size_t Length(std::string_view token) {
    while (!token.empty() && IsBlank(token.back())) token.remove_suffix(1);
    return token.size();
  }
  template <class Value>
  [[noreturn]] void Fail(Value& value, const CString& wanted) {
    std::string_view token = value.raw_json_token();
    token = token.substr(0, Length(token));
    throw STextFault{OffsetOf(token.data()), "\"" + CString(m_key) + "\" must be " + wanted + ", not " + Shown(token)};
  }
  static CString Shown(std::string_view token) {
    if (token.starts_with('{')) return "an object";
    if (token.starts_with('[')) return "a list";
    return token.starts_with('"') ? Quoted(token.substr(1, token.size() - 2)) : Quoted(token);
  }
  [[noreturn]] void FailWhole(simdjson::error_code error) {
    RequireText(m_text);
    switch (error) {
      case simdjson::MEMALLOC: throw STextFault{0, "there is too little memory for a file of this size"};
      case simdjson::EMPTY: throw STextFault{0, "the file is empty"};
      case simdjson::UNESCAPED_CHARS:
      case simdjson::UNCLOSED_STRING: throw STextFault{BrokenString(), "this text is not closed in its line"};
      default: throw STextFault{m_text.size(), "the text ends before the object that it holds"};
    }
  }
  /// Where the first string begins that is not closed before its line ends.
  std::size_t BrokenString() const {
    std::size_t begin = m_text.npos;
    for (std::size_t at = 0; at < m_text.size(); ++at) {
      const bool inside = begin != m_text.npos;
      if (inside && static_cast<unsigned char>(m_text[at]) < 0x20) break;
      if (m_text[at] == '"') begin = inside ? m_text.npos : at;
      if (inside && m_text[at] == '\\') ++at;
    }
    return std::min(begin, m_text.size());
  }
  template <class T>
  T Take(simdjson::simdjson_result<T> result) {
    T value;
    const simdjson::error_code error = std::move(result).get(value);
    if (error) throw STextFault{Here(), CString("this is no JSON: ") + simdjson::error_message(error)};
    return value;
  }

  // ---- Values

  template <class Value>
  json::object TakeObject(Value& value) {
    json::object object;
    const simdjson::error_code error = value.get_object().get(object);
    if (error == simdjson::INCORRECT_TYPE) Fail(value, "an object in braces");
    return error ? Take(simdjson::simdjson_result<json::object>(error)) : object;
  }
  json::array TakeArray(json::value& value, const char* wanted) {
    json::array array;
    const simdjson::error_code error = value.get_array().get(array);
    if (error == simdjson::INCORRECT_TYPE) Fail(value, wanted);
    return error ? Take(simdjson::simdjson_result<json::array>(error)) : array;
  }
  int TakeInt(json::value& value, int least, int most) {
    std::int64_t number = 0;
    if (value.get_int64().get(number) || number < least || number > most)
      Fail(value, "a whole number from " + IntText(least) + " to " + IntText(most));
    return static_cast<int>(number);
  }
  int TakeInt(json::value& value) {
    return TakeInt(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
  }
  bool TakeBool(json::value& value) {
    bool flag = false;
    if (value.get_bool().get(flag)) Fail(value, "true or false");
    return flag;
  }
  /// Valid while the text and the parser are.
  std::string_view TakeText(json::value& value, const char* wanted = "a text") {
    const char* const token = value.raw_json_token().data();
    if (*token != '"') Fail(value, wanted);
    // The parser has found every string closed. One without escapes can stay where it is.
    const char* end = token + 1;
    while (*end != '"' && *end != '\\') ++end;
    std::string_view text(token + 1, static_cast<std::size_t>(end - token - 1));
    const bool isPlain = *end == '"';
    if (isPlain ? value.get_raw_json_string().error() : value.get_string().get(text))
      Fail(value, "a text with valid escapes");
    return text;
  }
  bool TakeNull(json::value& value) {
    if (*value.raw_json_token().data() != 'n') return false;
    bool isNull = false;
    if (value.is_null().get(isNull) || !isNull) Fail(value, "a name or null");
    return true;
  }
  CPoint TakePoint(json::value& value) {
    constexpr const char* kWanted = "a place, [x,y]";
    json::array pair = TakeArray(value, kWanted);
    CPoint point;
    int count = 0;
    for (auto item : pair) {
      json::value number = Take(std::move(item));
      if (count == 2) Fail(number, "a place of two numbers");
      (count++ == 0 ? point.x : point.y) = TakeInt(number);
    }
    if (count != 2) Fail(value, kWanted);
    return point;
  }
  CPoints TakePoints(json::value& value) {
    CPoints points;
    for (auto item : TakeArray(value, "a list of places, [[x,y],...]")) {
      json::value point = Take(std::move(item));
      points.push_back(TakePoint(point));
    }
    return points;
  }
  CItemFlags TakeFlags(json::value& value) {
    CItemFlags flags = CItemFlags().set();
    for (auto item : TakeArray(value, "a list of numbers")) {
      json::value number = Take(std::move(item));
      const auto cleared = static_cast<std::size_t>(TakeInt(number, 0, static_cast<int>(flags.size()) - 1));
      if (!flags[cleared]) Fail(number, "a list without repeated numbers");
      flags.reset(cleared);
    }
    return flags;
  }

  // ---- Objects

  /// Calls `onKey` with the index of each key of the object and its value. Any other key, and one that stands there
  /// twice, is a fault. `keys` may grow meanwhile.
  template <class OnKey>
  void ForEachKey(json::object& object, const CKeys& keys, OnKey onKey) {
    std::bitset<kMaxKeys> seen;
    std::size_t expected = 0;
    for (auto member : object) {
      json::field field = Take(std::move(member));
      const std::size_t at = OffsetOf(field.key().raw()) - 1;
      const std::size_t index = IndexOf(field, keys, expected, at);
      assert(index < kMaxKeys);
      m_key = keys[index];
      if (seen[index]) throw STextFault{at, Quoted(m_key) + " stands in this object twice"};
      seen.set(index);
      expected = index + 1;
      onKey(index, field.value());
    }
  }
  std::size_t IndexOf(json::field& field, const CKeys& keys, std::size_t expected, std::size_t at) {
    const json::raw_json_string key = field.key();
    for (std::size_t index = expected; index < keys.size(); ++index)
      if (key.unsafe_is_equal(keys[index])) return index;
    const std::string_view text = Take(field.unescaped_key());
    for (std::size_t index = 0; index < keys.size(); ++index)
      if (text == keys[index]) return index;
    throw STextFault{at, Quoted(text) + " is no key of this object"};
  }

  void ReadRoot(json::object& root) {
    CKeys keys = {"format", "version", "kind"};
    const std::size_t head = keys.size();
    std::size_t count = 0;
    ForEachKey(root, keys, [&](std::size_t index, json::value value) {
      if (count < head && count != index) Fail(value, "after " + Quoted(keys[count]) + " in the file");
      if (++count <= head) return ReadHead(index, value, keys);
      index -= head;
      const auto& singles = m_technology->Singles();
      if (index < singles.size()) return ReadSingle(value, *singles[index].record);
      index -= singles.size();
      if (index < m_technology->Collections().size()) return ReadCollection(value, *m_technology->Collections()[index]);
      ReadDesigns(value);
    });
    if (count < head) throw STextFault{m_text.size(), Quoted(keys[count]) + " is missing"};
  }

  void ReadHead(std::size_t index, json::value& value, CKeys& keys) {
    if (index == 0) {
      if (TakeText(value) != "techsheet") Fail(value, "\"techsheet\"");
    } else if (index == 1) {
      if (TakeInt(value, 1, std::numeric_limits<int>::max()) > kDesignFileVersion)
        Fail(value, IntText(kDesignFileVersion) + " (a newer version of this program is needed)");
    } else {
      m_technology = MakeTechnology(TakeText(value), EContent::Empty);
      if (!m_technology) Fail(value, "the name of a kind of design");
      m_technology->Journal().SetRecording(false);
      for (const CTechnology::SSingle& single : m_technology->Singles()) keys.emplace_back(single.name);
      for (const CCollectionBase* collection : m_technology->Collections()) keys.emplace_back(collection->Name());
      if (m_technology->IsKindOf(CProject::GetThisClass())) keys.emplace_back("designs");
    }
  }

  void ReadDesigns(json::value& value) {
    CStringArray& files = static_cast<CProject&>(*m_technology).designFiles;
    for (auto item : TakeArray(value, "a list of paths")) {
      json::value file = Take(std::move(item));
      const std::string_view path = TakeText(file, "a list of paths");
      if (path.empty() || path.find('\0') != path.npos) Fail(file, "a list of paths");
      files.emplace_back(path);
    }
  }

  void ReadSingle(json::value& value, CRecordBase& single) {
    const std::unique_ptr<CRecordBase> draft = single.Clone();
    ReadRecord(value, PlanOf(*draft), *draft, single);
    single.AssignFrom(*draft);
  }

  void ReadCollection(json::value& value, CCollectionBase& home) {
    SKindPlan* plan = nullptr;
    const CField* const nameField = home.Kind().nameField;
    for (auto item : TakeArray(value, "a list of objects")) {
      json::value one = Take(std::move(item));
      std::unique_ptr<CRecordBase> record = home.Kind().make();
      if (!plan) plan = &PlanOf(*record);
      const std::size_t at = OffsetOf(one.raw_json_token().data());
      ReadRecord(one, *plan, *record, *record);
      if (nameField && home.FindRecord(record->RecordName()))
        throw STextFault{at, Quoted(record->RecordName()) + " stands in \"" + home.Name() + "\" twice"};
      home.Append(std::move(record));
      if (at >= m_nextProgress) ShowProgress(at);
    }
  }
  void ShowProgress(std::size_t at) {
    UserInterface().Progress(m_what, at, m_text.size());
    m_nextProgress = at + kProgressStep;
  }

  SKindPlan& PlanOf(CRecordBase& record) {
    const CKind& kind = record.Kind();
    const auto [at, isNew] = m_plans.try_emplace(&kind);
    SKindPlan& plan = at->second;
    if (!isNew) return plan;
    for (const CField& field : kind.fields) {
      SFieldPlan& one = plan.fields.emplace_back(SFieldPlan{&field});
      if (field.type->target) one.targets = m_technology->CollectionOf(*field.type->target());
      if (&kind == &CUnits::TheKind() && field.type->fieldClass == EFieldClass::Integer) {
        one.least = 0;
        one.most = CUnits::kMaxUnitsPrecision;
      }
      plan.keys.emplace_back(field.name);
    }
    for (std::size_t i = 0; const CCollectionBase* child = record.Child(i); ++i) plan.keys.emplace_back(child->Name());
    return plan;
  }

  /// Reads into `record`, which is detached; references that are still open will be those of `owner`.
  void ReadRecord(json::value& value, SKindPlan& plan, CRecordBase& record, CRecordBase& owner) {
    json::object object = TakeObject(value);
    ForEachKey(object, plan.keys, [&](std::size_t index, json::value item) {
      if (index < plan.fields.size()) {
        ReadField(item, plan.fields[index], record, owner);
      } else {
        ReadCollection(item, *record.Child(index - plan.fields.size()));
      }
    });
  }

  void ReadField(json::value& value, SFieldPlan& plan, CRecordBase& record, CRecordBase& owner) {
    void* const out = plan.field->at(record.FieldsAddress());
    switch (plan.field->type->fieldClass) {
      case EFieldClass::Text: *static_cast<CString*>(out) = TakeText(value); return;
      case EFieldClass::Name: static_cast<CName*>(out)->text = TakeText(value); return;
      case EFieldClass::Length: static_cast<Dsu*>(out)->value = TakeInt(value); return;
      case EFieldClass::Integer: *static_cast<int*>(out) = TakeInt(value, plan.least, plan.most); return;
      case EFieldClass::Angle: *static_cast<CAngle*>(out) = CAngle(TakeInt(value)); return;
      case EFieldClass::Boolean: *static_cast<bool*>(out) = TakeBool(value); return;
      case EFieldClass::Point: *static_cast<CPoint*>(out) = TakePoint(value); return;
      case EFieldClass::Points: *static_cast<CPoints*>(out) = TakePoints(value); return;
      case EFieldClass::Flags: *static_cast<CItemFlags*>(out) = TakeFlags(value); return;
      case EFieldClass::Code: *static_cast<int*>(out) = TakeCode(value, plan.field->type->choices()); return;
      case EFieldClass::Colour:
        if (!ColourFromText(TakeText(value), *static_cast<CColour*>(out))) Fail(value, "a colour, \"#RRGGBB\"");
        return;
      case EFieldClass::Reference: return ReadReference(value, plan, *static_cast<CRefBase*>(out), owner);
    }
  }

  int TakeCode(json::value& value, std::span<const SChoice> choices) {
    std::int64_t code = 0;
    const bool isNumber = !value.get_int64().get(code);
    CString allowed;
    for (const SChoice& choice : choices) {
      if (isNumber && choice.value == code) return choice.value;
      allowed += (allowed.empty() ? "" : ", ") + IntText(choice.value);
    }
    Fail(value, "one of " + allowed);
  }

  void ReadReference(json::value& value, SFieldPlan& plan, CRefBase& out, CRecordBase& owner) {
    if (TakeNull(value)) {
      out.target = nullptr;
      return;
    }
    const std::string_view name = TakeText(value, "a name or null");
    if (!plan.last || name != plan.lastName) {
      CRecordBase* const found = plan.targets ? plan.targets->FindRecord(name) : nullptr;
      if (!found) {
        m_open.push_back({&owner, &plan, name, OffsetOf(value.raw_json_token().data())});
        return;
      }
      plan.lastName = name;
      plan.last = found;
    }
    out.target = plan.last;
  }

  void ResolveOpenReferences() {
    for (const SOpenReference& open : m_open) {
      const CRefBase found{open.plan->targets ? open.plan->targets->FindRecord(open.name) : nullptr};
      if (!found.target)
        throw STextFault{open.at, CString("\"") + open.plan->field->name + "\" names " + Quoted(open.name) +
                                      ", which this file does not hold"};
      open.plan->field->set(*open.record, &found);
    }
  }

  std::string_view m_text;
  CString m_what;
  std::string_view m_key;  // the one being read, for messages
  std::size_t m_nextProgress = kProgressStep;
  json::parser m_parser;
  json::document m_document;
  std::unique_ptr<CTechnology> m_technology;
  std::map<const CKind*, SKindPlan> m_plans;
  std::vector<SOpenReference> m_open;
};
}  // namespace

CResult<std::unique_ptr<CTechnology>> ParseDesign(CString text, const CString& name) {
  const std::size_t size = text.size();
  text.append(simdjson::SIMDJSON_PADDING, '\0');
  const std::string_view whole(text.data(), size);
  try {
    return CDesignReader(whole, name).Read();
  } catch (const STextFault& fault) {
    const STextPlace place = PlaceIn(whole, fault.at);
    const CString args[] = {name, IntText(static_cast<std::int64_t>(place.line)),
                            IntText(static_cast<std::int64_t>(place.column)), fault.reason};
    return SFailure{FormatText("%1, line %2, column %3: %4.", args)};
  }
}
