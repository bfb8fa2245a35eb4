// Findings: what the checks of a page have to say.
//
// A check never writes and never asks. It sees the values of a row and what the row stands among, and appends what it
// finds: a refusal, a question, or an information. Who runs the checks decides what becomes of them: Apply stops at the
// first refusal and asks, an import writes its report, a survey lists everything, a form sends the person to the field.
#pragma once
#include <ranges>

#include "model/services/apperror.h"
#include "model/services/userinterface.h"
#include "technology/columns.h"

class CGridRows;
struct SCheckedRow;

enum class EFinding { Refusal, Question, Information };

struct SFinding {
  EFinding kind = EFinding::Refusal;
  const CGridRows* rows = nullptr;  // of the grid it is about; null: the page as a whole, or a record of a file
  int row = 0;                      // of that grid, 0 for none
  const CField* field = nullptr;    // null: the row as a whole
  int col = -1;                     // of a cell that shows no field
  CTextId id{};                     // none: a ready text, or none at all, which refuses in silence
  CStringArray args{};
  CString text{};                         // a ready text; with an identifier, what people read in place of its own
  std::vector<int> alsoRows{};            // others that are at fault as much
  bool isUnnamed = false;                 // says nothing of whose fault it is
  EButtons buttons = EButtons::OkCancel;  // of a question
  std::size_t more = 0;                   // so many other rows share it, of which nothing else is found

  CString Message() const;
  /// Whether they are the same but for their places.
  bool SaysTheSame(const SFinding& other) const {
    return kind == other.kind && id == other.id && args == other.args && text == other.text;
  }
};

/// What a checked row stands among: the present rows of a page, the records of a design, the records of a file.
class CRowContext {
 public:
  struct SOther {
    const CRecordBase* values;
    const CRecordBase* record;  // in the design, or null
    int row;                    // of a grid, or 0
  };
  virtual ~CRowContext() = default;
  /// All of the kind, and of the owner, of the row, which may be among them; valid until the next call and
  /// while no draft among them is replaced.
  virtual std::span<const SOther> All(const SCheckedRow& row) const = 0;
  /// What messages call the row: its number among the present ones, or that of the record in its file.
  virtual CString NumberOf(const SCheckedRow& row) const = 0;
  /// The values of the record that owns it, null for a row that nobody owns.
  virtual const CRecordBase* OwnerOf(const SCheckedRow& row) const = 0;
  /// The record that references to this one will go to: itself unless it is merged away.
  virtual const CRecordBase& SurvivorOf(const CRecordBase& record) const = 0;
};

/// A row, a record of a file or the draft of a form, as checks see it.
struct SCheckedRow {
  const CRecordBase& values;  // what is to be
  const CRecordBase* record;  // what is, in the design; null for a new one
  const CRowContext& among;
  const CGridRows* rows = nullptr;  // whose grid it is in, where it is in one
  int row = 0;                      // its number there, or the record of a file; 0 for a row to come
  int ownerRow = 0;                 // the row that owns it or will, 0 for none

  const CKind& Kind() const { return values.Kind(); }
  template <class T>
  bool Is() const {
    return &Kind() == &T::TheKind();
  }
  template <class T>
  const T& As() const {
    return static_cast<const T&>(values);
  }
  /// The record as it is in the design, or null.
  template <class T>
  const T* Before() const {
    return static_cast<const T*>(record);
  }
  CString Number() const { return among.NumberOf(*this); }
  const CRecordBase* Owner() const { return among.OwnerOf(*this); }
  /// The values of those that it will stand among, without itself.
  auto Others() const {
    return among.All(*this) | std::views::filter([self = *this](const CRowContext::SOther& other) {
             return other.values != &self.values && (!self.record || other.record != self.record) &&
                    (self.row == 0 || other.row != self.row);
           }) |
           std::views::transform([](const CRowContext::SOther& other) -> const CRecordBase& { return *other.values; });
  }
};

/// Findings in the order of rows and rules. Where the first refusal ends the matter, nothing behind it is wanted.
class CFindings {
 public:
  /// For marks, one refusal of each kind of check of a row is enough.
  enum class EWants { All, UpToRefusal, Marks };
  explicit CFindings(EWants wants = EWants::All) : m_wants(wants) {}

  template <class F, class V, class... Args>
  void Add(const SCheckedRow& row, V F::* member, CTextId id, const Args&... args) {
    Append(EFinding::Refusal, row, &FieldOf(row.Kind(), member), id, {ArgText(args)...});
  }
  /// OK goes on, Cancel refuses in silence. An answer holds until the field changes.
  template <class F, class V, class... Args>
  void Ask(const SCheckedRow& row, V F::* member, CTextId id, const Args&... args) {
    Append(EFinding::Question, row, &FieldOf(row.Kind(), member), id, {ArgText(args)...});
  }
  /// Said when the row is written.
  template <class F, class V, class... Args>
  void Tell(const SCheckedRow& row, V F::* member, CTextId id, const Args&... args) {
    Append(EFinding::Information, row, &FieldOf(row.Kind(), member), id, {ArgText(args)...});
  }
  /// The row as a whole; a deletion that is not wanted.
  template <class... Args>
  void Refuse(const SCheckedRow& row, CTextId id, const Args&... args) {
    Append(EFinding::Refusal, row, nullptr, id, {ArgText(args)...});
  }
  /// Yes goes on; No, the default, refuses in silence.
  template <class... Args>
  void AskYesNo(const SCheckedRow& row, CTextId id, const Args&... args) {
    Append(EFinding::Question, row, nullptr, id, {ArgText(args)...});
    m_all.back().buttons = EButtons::YesNo;
  }
  /// The last finding holds for so many other rows too. A person who is sent to the first row is not told.
  void HoldsForMore(std::size_t rows) {
    if (m_wants == EWants::All) m_all.back().more = rows;
  }
  /// The last finding is about another row as much.
  void AlsoAt(const SCheckedRow& row) { m_all.back().alsoRows.push_back(row.row); }
  void RefuseInSilence(const SCheckedRow& row) { Append(EFinding::Refusal, row, nullptr, {}, {}); }
  /// Asked of the page as a whole.
  template <class... Args>
  void AskOfPage(CTextId id, const Args&... args) {
    m_all.push_back({.kind = EFinding::Question, .id = id, .args = {ArgText(args)...}});
  }
  /// The last error, which a validator set, refuses the field; the last error is none afterwards.
  template <class F, class V>
  void AddLastError(const SCheckedRow& row, V F::* member) {
    AppendLastError({.rows = row.rows, .row = row.row, .field = &FieldOf(row.Kind(), member)});
  }
  /// The same for a cell.
  void AddLastErrorOfCell(const CGridRows& rows, int row, int col) {
    AppendLastError({.rows = &rows, .row = row, .col = col});
  }
  void Append(EFinding kind, const SCheckedRow& row, const CField* field, CTextId id, CStringArray args) {
    m_all.push_back(
        {.kind = kind, .rows = row.rows, .row = row.row, .field = field, .id = id, .args = std::move(args)});
    m_isRefused |= kind == EFinding::Refusal;
  }

  void Append(SFinding finding) {
    m_isRefused |= finding.kind == EFinding::Refusal;
    m_all.push_back(std::move(finding));
  }
  /// Those of another run, behind these.
  void Append(const CFindings& more);

  const std::vector<SFinding>& All() const { return m_all; }
  bool IsEmpty() const { return m_all.empty(); }
  /// Nobody wants to hear more: long checks may end.
  bool IsDecided() const { return m_isRefused && m_wants != EWants::All; }
  /// What comes next is another check, or another row: where marks are wanted, it has its own refusal.
  void GoOn() { m_isRefused &= m_wants != EWants::Marks; }
  const SFinding* FirstRefusal() const;

 private:
  static CString ArgText(const CString& text) { return text; }
  static CString ArgText(const CName& name) { return name.text; }
  static CString ArgText(const char* text) { return text; }
  void AppendLastError(SFinding place);

  std::vector<SFinding> m_all;
  EWants m_wants;
  bool m_isRefused = false;
};
