// The values of fields as JSON in design files: the one place that knows how every type of field is written and read.
//
// What a value looks like there is told in docs/file-format.md. Lengths, angles and codes are integers, exact.
#pragma once
#include <vector>

#include "model/design/record.h"
#include "storage/valuereader.h"

class CCollectionBase;
class CFieldReader;

// ---- Reading

/// What reading a field needs to know beside the field.
struct SFieldPlan {
  /// `targets` are the records that a reference may name; null where the design holds none.
  SFieldPlan(const CField& field, const CCollectionBase* targets);

  const CField* field;
  void (*read)(CFieldReader& reader, simdjson::ondemand::value& value, const CField& field, void* out);
  const CCollectionBase* targets;
  std::string_view lastName{};  // neighbours often refer to the same record
  CRecordBase* last = nullptr;
};

/// Reads fields into records that are detached. References to records that have not been read yet stay open.
class CFieldReader : public CValueReader {
 public:
  using CValueReader::CValueReader;

  /// Throws STextFault. A reference that is left open will be that of `owner`.
  void ReadField(simdjson::ondemand::value& value, SFieldPlan& plan, CRecordBase& record, CRecordBase& owner);
  void ReadReference(simdjson::ondemand::value& value, SFieldPlan& plan, CRefBase& out, CRecordBase& owner);
  /// Gives the open references their targets. Throws STextFault at the first that names none.
  void ResolveOpenReferences();

 private:
  struct SOpenReference {
    CRecordBase* record;
    const SFieldPlan* plan;
    std::string_view name;
    std::size_t at;
  };
  std::vector<SOpenReference> m_open;
};

// ---- Writing

inline constexpr std::size_t kLineLength = 160;  // bytes; what does not fit is broken into several lines

/// How a value may lie: in one line, however long; in one line that is cut off where it gets too long, since the record
/// will be written again; or broken into several lines where it does not fit into one.
enum class ELines { One, OneIfItFits, Several };

/// A field of the records of one kind, for writing.
struct SFieldKey {
  /// `usual` is the value that is not written; null when every value is.
  SFieldKey(const CField& field, const void* usual);

  bool IsUsual(const void* value) const {
    if (!usual) return false;
    switch (equal) {
      case EEqual::Ints: return *static_cast<const int*>(value) == *static_cast<const int*>(usual);
      case EEqual::Targets: return *static_cast<const CRefBase*>(value) == *static_cast<const CRefBase*>(usual);
      case EEqual::AsTheTypeSays: break;
    }
    return field->type->equal(value, usual);
  }
  /// Appends a value; the lines of one that is broken are indented by more than `indent`.
  void AppendValue(CString& out, const void* value, std::size_t indent, ELines lines) {
    if (append) return append(out, value, indent, lines);
    AppendReference(out, static_cast<const CRefBase*>(value)->target);
  }

  const CField* field;
  void (*append)(CString& out, const void* value, std::size_t indent, ELines lines);  // null for references
  enum class EEqual : std::uint8_t { AsTheTypeSays, Ints, Targets } equal;  // most are compared without a call
  CString text;                                                             // ,"key":
  const void* usual;
  const CRecordBase* target = nullptr;  // the record last referred to; neighbours often refer to the same one
  CString targetText{};                 // its name in quotation marks

 private:
  void AppendReference(CString& out, const CRecordBase* named);
};
