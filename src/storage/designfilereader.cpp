#include <bitset>
#include <cassert>
#include <map>

#include "model/services/userinterface.h"
#include "storage/designfile.h"
#include "storage/fieldjson.h"

namespace {
namespace json = simdjson::ondemand;

constexpr std::size_t kMaxDepth = 64;
constexpr std::size_t kMaxKeys = 128;  // of one object
constexpr std::size_t kProgressStep = 4 << 20;

using CKeys = std::vector<std::string_view>;

struct SKindPlan {
  std::vector<SFieldPlan> fields;
  CKeys keys;  // the fields, then the owned collections
};

class CDesignReader : private CFieldReader {
 public:
  /// Behind `text` there must be room for simdjson's padding.
  CDesignReader(std::string_view text, const CString& name) : CFieldReader(text), m_what("Reading " + name) {}
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
    if (!problems.empty()) {
      CString what = problems.front();
      if (what.ends_with('.')) what.pop_back();  // it becomes the end of a sentence of the reader's
      throw STextFault{0, what};
    }
    m_technology->Journal().SetRecording(true);
    return std::move(m_technology);
  }

 private:
  // ---- Faults

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
      plan.fields.emplace_back(field,
                               field.type->IsReference() ? m_technology->CollectionOf(*field.type->target()) : nullptr);
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

  CString m_what;
  std::size_t m_nextProgress = kProgressStep;
  json::parser m_parser;
  std::unique_ptr<CTechnology> m_technology;
  std::map<const CKind*, SKindPlan> m_plans;
};
}  // namespace

CResult<std::unique_ptr<CTechnology>> ParseDesign(CString text, const CString& name) {
  const std::size_t size = text.size();
  text.append(simdjson::SIMDJSON_PADDING, '\0');
  const std::string_view whole(text.data(), size);
  try {
    return CDesignReader(whole, name).Read();
  } catch (const STextFault& fault) {
    return SFailure{FaultText(name, PlaceIn(whole, fault.at), fault.reason)};
  }
}
