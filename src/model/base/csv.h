// Delimited text (CSV): fields parted by one separator character, one record a line.
//
// What the writer writes the reader reads back unchanged, whatever the fields hold: a field that is quoted keeps
// separators, line breaks and (doubled) quotation marks.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "model/base/text.h"

/// Reads a text record by record, in one pass. Lines may end in LF, CR LF or CR; a byte order mark at the start is
/// skipped. An empty line is a record without fields. A broken record does not hide those behind it: reading goes on
/// at the next line, only behind a quotation mark that is never closed nothing is left to read.
class CCsvReader {
 public:
  enum class EStep { Record, Broken, End };
  static constexpr std::size_t kMaxFields = 1000;  // of a record

  /// `text` must outlive the reader; `separator` is neither a quotation mark nor a line end.
  CCsvReader(std::string_view text, char separator);

  /// Goes on to the next record. Broken records have quotation marks out of place, too many fields, bytes that are not
  /// UTF-8, or a NUL; they have no fields, and Error says what is wrong.
  EStep Next();

  /// Valid until the next call of Next.
  const std::vector<std::string_view>& Fields() const { return m_fields; }
  std::size_t Record() const { return m_record; }  // from 1; empty and broken ones count
  /// From 1, where the record begins; counted when it is asked for.
  std::size_t Line();
  const CString& Error() const { return m_error; }

 private:
  /// The next byte from `at` on that a field without quotation marks ends or is broken at, or the text's end.
  std::size_t FindStop(std::size_t at) const {
    while (at < m_text.size() && !m_stops[static_cast<unsigned char>(m_text[at])]) ++at;
    return at;
  }
  /// The line ends between two places.
  std::size_t CountLineEnds(std::size_t from, std::size_t to) const;
  bool ReadFields();
  bool ReadQuoted();
  bool Fail(std::string_view reason) { return FailAt(m_at, reason); }
  bool FailAt(std::size_t at, std::string_view reason);
  void SkipLine();
  void SkipLineEnd();

  std::string_view m_text;
  char m_separator;
  bool m_stops[256] = {};  // for each byte, whether a field without quotation marks cannot just go on with it
  bool m_isText;           // all of it, so no record needs a look of its own
  std::size_t m_at = 0, m_start = 0, m_record = 0;  // m_start: where the record begins
  std::size_t m_countedTo = 0, m_line = 1;          // a place in front of that, and its line
  std::vector<std::string_view> m_fields;
  CString m_unquoted;  // fields of this record that held doubled quotation marks; never moves while they are in use
  CString m_error;
};

/// Collects records in one buffer. Lines end in LF.
class CCsvWriter {
 public:
  explicit CCsvWriter(char separator) : m_separator(separator) {}

  /// Adds a field between quotation marks.
  void Quoted(std::string_view field);
  /// Adds a field without quotation marks, save where it could not be read back so.
  void Plain(std::string_view field) {
    PlainBy([field](CString& out) { out += field; });
  }
  /// The same for a field that `append` appends to the text, such as a number.
  template <class F>
  void PlainBy(F append) {
    const std::size_t from = BeginField();
    append(m_text);
    EndPlain(from);
  }
  void EndRecord();
  /// Makes room for so many more records like those so far, which spares growing with each few of them.
  void MakeRoom(std::size_t records);

  const CString& Text() const { return m_text; }

 private:
  std::size_t BeginField();
  void EndPlain(std::size_t from);

  CString m_text;
  char m_separator;
  std::size_t m_records = 0;
  std::size_t m_recordStart = 0;
  bool m_hasFields = false;
};
