#include <algorithm>
#include <charconv>
#include <iterator>
#include <map>

#include "model/base/jsontext.h"
#include "storage/designfile.h"

namespace {
constexpr std::size_t kLineLength = 160;  // bytes; fields that do not fit stand one a line

/// What the records of one kind have in common: their keys, and the values that are not written.
struct SKindForm {
  struct SKey {
    const CField* field;
    std::size_t offset;                   // of the field in the fields of a record
    CString text;                         // ,"key":
    const void* usual;                    // null: written in any case
    const CRecordBase* target = nullptr;  // the record last referred to; neighbours often refer to the same one
    CString targetText{};                 // its name in quotation marks
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
      keys.push_back({&field,
                      static_cast<std::size_t>(at(field, record) - static_cast<const char*>(record.FieldsAddress())),
                      ",\"" + CString(field.name) + "\":", isAlwaysWritten ? nullptr : at(field, *usual)});
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
    for (const CRecordBase* record = collection.FirstRecord(); record; record = record->Next()) {
      if (record->Previous()) m_out += ',';
      NewLine(indent + 1);
      WriteRecord(*record, form, indent + 1);
    }
    m_out += ']';
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
      if (key.usual && IsUsual(*key.field->type, value, key.usual)) continue;
      if (wrapped && m_out.size() > begin) {
        m_out += ',';
        NewLine(indent + 1);
        m_out.append(key.text, 1);
      } else {
        m_out += key.text;
      }
      WriteValue(key, value, indent + 1, wrapped);
      if (!wrapped && m_out.size() - begin + indent > kLineLength - 2) return false;  // a brace and a comma follow
    }
    if (m_out.size() == begin) m_out += ',';
    m_out[begin] = '{';  // the first comma stood for it
    return true;
  }

  static bool IsWritten(const CRecordBase& record, const SKindForm& form) {
    const char* const fields = static_cast<const char*>(record.FieldsAddress());
    return std::any_of(form.keys.begin(), form.keys.end(), [&](const SKindForm::SKey& key) {
      return !key.usual || !IsUsual(*key.field->type, fields + key.offset, key.usual);
    });
  }

  static bool IsUsual(const CFieldType& type, const void* value, const void* usual) {
    switch (type.fieldClass) {
      case EFieldClass::Length:
      case EFieldClass::Integer:
      case EFieldClass::Code: return *static_cast<const int*>(value) == *static_cast<const int*>(usual);
      case EFieldClass::Reference: return !static_cast<const CRefBase*>(value)->target;
      default: return type.equal(value, usual);
    }
  }

  template <class T>
  static const T& As(const void* value) {
    return *static_cast<const T*>(value);
  }

  void WriteValue(SKindForm::SKey& key, const void* value, std::size_t indent, bool mayWrap) {
    switch (key.field->type->fieldClass) {
      case EFieldClass::Text: return AppendJsonText(m_out, As<CString>(value));
      case EFieldClass::Name: return AppendJsonText(m_out, As<CName>(value).text);
      case EFieldClass::Length:
      case EFieldClass::Integer:
      case EFieldClass::Code: return AppendInt(m_out, As<int>(value));
      case EFieldClass::Angle: return AppendInt(m_out, As<CAngle>(value).GetMilliDegrees());
      case EFieldClass::Boolean: m_out += As<bool>(value) ? "true" : "false"; return;
      case EFieldClass::Colour: ((m_out += '"') += ColourText(As<CColour>(value))) += '"'; return;
      case EFieldClass::Point: return WritePoint(As<CPoint>(value));
      case EFieldClass::Points: return WritePoints(As<CPoints>(value), indent, mayWrap);
      case EFieldClass::Flags: return WriteClearFlags(As<CItemFlags>(value));
      case EFieldClass::Reference: return WriteReference(key, As<CRefBase>(value).target);
    }
  }

  void WriteReference(SKindForm::SKey& key, const CRecordBase* target) {
    if (!target) {
      m_out += "null";
      return;
    }
    if (target != key.target) {
      key.target = target;
      key.targetText.clear();
      AppendJsonText(key.targetText, target->RecordName());
    }
    m_out += key.targetText;
  }
  void WritePoint(CPoint point) {
    char text[32] = "[";
    char* end = std::to_chars(text + 1, text + 12, point.x).ptr;
    *end++ = ',';
    end = std::to_chars(end, end + 11, point.y).ptr;
    *end++ = ']';
    m_out.append(text, end);
  }
  /// Points that make too long a line stand one a line where they may; elsewhere the rest is left out, since the record
  /// does not fit into its line anyway.
  void WritePoints(const CPoints& points, std::size_t indent, bool mayWrap, bool wrapped = false) {
    const std::size_t begin = m_out.size();
    m_out += '[';
    for (const CPoint& point : points) {
      if (&point != &points.front()) m_out += ',';
      if (wrapped) NewLine(indent + 1);
      WritePoint(point);
      if (wrapped || m_out.size() - begin <= kLineLength) continue;
      if (!mayWrap) return;
      m_out.resize(begin);
      return WritePoints(points, indent, true, true);
    }
    m_out += ']';
  }
  void WriteClearFlags(const CItemFlags& flags) {
    m_out += '[';
    for (std::size_t item = 0; item < flags.size(); ++item) {
      if (flags[item]) continue;
      if (m_out.back() != '[') m_out += ',';
      AppendInt(m_out, static_cast<std::int64_t>(item));
    }
    m_out += ']';
  }

  const CTechnology& m_technology;
  std::map<const CKind*, SKindForm> m_forms;
  CString m_out;
};
}  // namespace

CString DesignText(const CTechnology& technology) { return CDesignWriter(technology).Write(); }
