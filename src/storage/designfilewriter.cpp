#include <algorithm>
#include <map>

#include "model/base/jsontext.h"
#include "storage/designfile.h"
#include "storage/fieldjson.h"

namespace {
constexpr std::size_t kSample = 8;  // one in so many records of a collection tells what all of them take

/// What the records of one kind have in common: their keys, and the values that are not written.
struct SKindForm {
  struct SKey : SFieldKey {
    std::size_t offset;  // of the field in the fields of a record
  };
  std::unique_ptr<const CRecordBase> usual;
  std::vector<SKey> keys;

  explicit SKindForm(const CRecordBase& record) : SKindForm(record, record.Kind().make()) {}
  /// Of a record that stands in a design once, all keys are written that files have always had.
  explicit SKindForm(const CTechnology::SSingle& single) : SKindForm(*single.record, single.usual->Clone()) {}

 private:
  SKindForm(const CRecordBase& record, std::unique_ptr<const CRecordBase> aUsual) : usual(std::move(aUsual)) {
    const auto at = [](const CField& field, const CRecordBase& one) { return &field.As<char>(one.FieldsAddress()); };
    for (const CField& field : record.Kind().fields) {
      const bool isAlwaysWritten = record.Kind().make ? &field == record.Kind().nameField : !field.isLate;
      keys.push_back({SFieldKey(field, isAlwaysWritten ? nullptr : at(field, *usual)),
                      static_cast<std::size_t>(at(field, record) - static_cast<const char*>(record.FieldsAddress()))});
    }
  }
};

class CDesignWriter {
 public:
  explicit CDesignWriter(const CTechnology& technology) : m_technology(technology) {}

  CString Write() {
    m_out += "{\n\"format\":\"techsheet\",\n\"version\":";
    AppendInt(m_out, kDesignFileVersion);
    m_out += ",\n\"kind\":";
    AppendJsonText(m_out, m_technology.GetRuntimeClass()->name);
    if (const CProject* const project = DynamicDowncast<CProject>(&m_technology)) WriteDesigns(*project);
    for (const CTechnology::SSingle& single : m_technology.Singles()) {
      SKindForm form(single);
      if (!IsWritten(*single.record, form)) continue;
      Key(single.name, 0);
      WriteRecord(*single.record, form, 0);
    }
    for (const CCollectionBase* collection : m_technology.Collections())
      if (collection->Count() > 0) WriteCollection(*collection, 0);
    m_out += "\n}\n";
    return std::move(m_out);
  }

 private:
  void NewLine(std::size_t indent) {
    m_out += '\n';
    m_out.append(indent, ' ');
  }
  void Key(const char* name, std::size_t indent) {
    if (m_out.back() != '{') m_out += ',';
    NewLine(indent);
    ((m_out += '"') += name) += "\":";
  }

  void WriteDesigns(const CProject& project) {
    Key("designs", 0);
    m_out += '[';
    for (const CString& file : project.designFiles) {
      if (&file != &project.designFiles.front()) m_out += ',';
      NewLine(1);
      AppendJsonText(m_out, file);
    }
    m_out += ']';
  }

  void WriteCollection(const CCollectionBase& collection, std::size_t indent) {
    Key(collection.Name(), indent);
    m_out += '[';
    SKindForm& form = m_forms.try_emplace(&collection.Kind(), *collection.FirstRecord()).first->second;
    const std::size_t begin = m_out.size();
    std::size_t written = 0;
    for (const CRecordBase* record = collection.FirstRecord(); record; record = record->Next()) {
      if (record->Previous()) m_out += ',';
      NewLine(indent + 1);
      WriteRecord(*record, form, indent + 1);
      if (indent == 0 && ++written == collection.Count() / kSample) MakeRoom(begin);
    }
    m_out += ']';
  }

  /// Reserves what a collection is going to need by what its first records took since `begin`. Growing step by step
  /// would copy a large file several times over; what turns out to be too much is never touched.
  void MakeRoom(std::size_t begin) {
    const std::size_t sample = m_out.size() - begin;
    m_out.reserve(begin + sample * kSample + sample);
  }

  void WriteRecord(const CRecordBase& record, SKindForm& form, std::size_t indent) {
    const std::size_t begin = m_out.size();
    if (!WriteFields(record, form, indent, false)) {
      m_out.resize(begin);
      WriteFields(record, form, indent, true);
    }
    for (std::size_t i = 0; const CCollectionBase* child = record.Child(i); ++i)
      if (child->Count() > 0) WriteCollection(*child, indent + 1);
    m_out += '}';
  }

  /// The opening brace and the fields that differ from the usual. False when they do not fit into one line, unless they
  /// are `wrapped`.
  bool WriteFields(const CRecordBase& record, SKindForm& form, std::size_t indent, bool wrapped) {
    const std::size_t begin = m_out.size();
    const char* const fields = static_cast<const char*>(record.FieldsAddress());
    for (SKindForm::SKey& key : form.keys) {
      const void* const value = fields + key.offset;
      if (key.IsUsual(value)) continue;
      if (wrapped && m_out.size() > begin) {
        m_out += ',';
        NewLine(indent + 1);
        m_out.append(key.text, 1);
      } else {
        m_out += key.text;
      }
      key.AppendValue(m_out, value, indent + 1, wrapped ? ELines::Several : ELines::OneIfItFits);
      if (!wrapped && m_out.size() - begin + indent > kLineLength - 2) return false;  // a brace and a comma follow
    }
    if (m_out.size() == begin) m_out += ',';
    m_out[begin] = '{';  // the first comma stood for it
    return true;
  }

  static bool IsWritten(const CRecordBase& record, const SKindForm& form) {
    const char* const fields = static_cast<const char*>(record.FieldsAddress());
    return std::any_of(form.keys.begin(), form.keys.end(),
                       [&](const SKindForm::SKey& key) { return !key.IsUsual(fields + key.offset); });
  }

  const CTechnology& m_technology;
  std::map<const CKind*, SKindForm> m_forms;
  CString m_out;
};
}  // namespace

CString DesignText(const CTechnology& technology) { return CDesignWriter(technology).Write(); }
