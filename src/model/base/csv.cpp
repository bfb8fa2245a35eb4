#include "model/base/csv.h"

#include <cassert>
#include <utility>

namespace {

bool IsText(std::string_view text) { return IsValidUtf8(text) && text.find('\0') == std::string_view::npos; }

}  // namespace

CCsvReader::CCsvReader(std::string_view text, char separator) : m_text(text), m_separator(separator) {
  assert(separator != '"' && separator != '\n' && separator != '\r');
  if (m_text.starts_with("\xEF\xBB\xBF")) m_text.remove_prefix(3);
  for (const char c : {separator, '"', '\n', '\r'}) m_stops[static_cast<unsigned char>(c)] = true;
  m_isText = IsText(m_text);
}

CCsvReader::EStep CCsvReader::Next() {
  m_fields.clear();
  m_unquoted.clear();
  m_start = m_at;
  if (m_at == m_text.size()) return EStep::End;
  ++m_record;
  bool whole = ReadFields();
  if (!whole) {
    SkipLine();
  } else if (!m_isText && !IsText(m_text.substr(m_start, m_at - m_start))) {
    whole = Fail("these bytes are no text. Save the file as UTF-8 text.");
  }
  SkipLineEnd();
  if (whole) return EStep::Record;
  m_fields.clear();
  return EStep::Broken;
}

/// Reads up to the end of the record's last line; false, somewhere in the record, when it is broken.
bool CCsvReader::ReadFields() {
  if (m_text[m_at] == '\n' || m_text[m_at] == '\r') return true;
  for (;; ++m_at) {
    if (m_fields.size() == kMaxFields) return Fail("there are more than " + IntText(kMaxFields) + " fields.");
    if (m_at < m_text.size() && m_text[m_at] == '"') {
      if (!ReadQuoted()) return false;
    } else {
      const std::size_t start = m_at;
      m_at = FindStop(m_at);
      m_fields.push_back(m_text.substr(start, m_at - start));
    }
    if (m_at == m_text.size() || m_text[m_at] == '\n' || m_text[m_at] == '\r') return true;
    if (m_text[m_at] == m_separator) continue;
    return Fail(m_text[m_at] == '"'
                    ? "a quotation mark stands inside a field. Put the whole field between quotation marks and double "
                      "those inside."
                    : "text stands behind a closing quotation mark. Double the quotation marks inside a field.");
  }
}

/// Reads the quoted field that begins here, and stops behind its closing quotation mark.
bool CCsvReader::ReadQuoted() {
  const std::size_t opened = m_at, kept = m_unquoted.size();
  std::size_t start = ++m_at;
  for (;;) {
    const std::size_t quote = m_text.find('"', m_at);
    if (quote == std::string_view::npos) {
      m_at = m_text.size();
      return FailAt(opened, "a quotation mark is never closed.");
    }
    m_at = quote + 1;
    if (m_at == m_text.size() || m_text[m_at] != '"') {
      std::string_view field = m_text.substr(start, quote - start);
      if (m_unquoted.size() > kept) field = std::string_view(m_unquoted.append(field)).substr(kept);
      m_fields.push_back(field);
      return true;
    }
    m_unquoted.reserve(m_text.size());  // once, while it is empty: no view into it ever breaks
    m_unquoted.append(m_text, start, m_at - start);
    start = ++m_at;
  }
}

bool CCsvReader::FailAt(std::size_t at, std::string_view reason) {
  m_error = "line " + IntText(static_cast<std::int64_t>(Line() + CountLineEnds(m_start, at))) + ": ";
  m_error += reason;
  return false;
}

void CCsvReader::SkipLine() {
  while (m_at < m_text.size() && m_text[m_at] != '\n' && m_text[m_at] != '\r') ++m_at;
}

void CCsvReader::SkipLineEnd() {
  if (m_at == m_text.size()) return;
  m_at += m_text.substr(m_at).starts_with("\r\n") ? 2 : 1;
}

std::size_t CCsvReader::Line() {
  m_line += CountLineEnds(std::exchange(m_countedTo, m_start), m_start);
  return m_line;
}

std::size_t CCsvReader::CountLineEnds(std::size_t from, std::size_t to) const {
  std::size_t count = 0;
  for (std::size_t at = from; at < to; ++at)
    count += m_text[at] == '\n' || (m_text[at] == '\r' && !m_text.substr(at + 1).starts_with('\n'));
  return count;
}

std::size_t CCsvWriter::BeginField() {
  if (m_hasFields) m_text += m_separator;
  m_hasFields = true;
  return m_text.size();
}

void CCsvWriter::Quoted(std::string_view field) {
  BeginField();
  m_text += '"';
  for (std::size_t quote; (quote = field.find('"')) != std::string_view::npos; field.remove_prefix(quote + 1)) {
    m_text.append(field.substr(0, quote + 1));
    m_text += '"';
  }
  m_text.append(field);
  m_text += '"';
}

void CCsvWriter::MakeRoom(std::size_t records) {
  if (m_records > 0) m_text.reserve(m_text.size() + (m_text.size() / m_records + 1) * records);
}

void CCsvWriter::EndPlain(std::size_t from) {
  for (std::size_t i = from; i < m_text.size(); ++i) {
    const char c = m_text[i];
    if (c != m_separator && c != '"' && c != '\n' && c != '\r') continue;
    const CString field = m_text.substr(from);
    m_text.resize(from - (from > m_recordStart));
    m_hasFields = from > m_recordStart;
    Quoted(field);
    return;
  }
}

void CCsvWriter::EndRecord() {
  if (m_hasFields && m_text.size() == m_recordStart) m_text += "\"\"";  // not to be mistaken for an empty line
  m_text += '\n';
  ++m_records;
  m_recordStart = m_text.size();
  m_hasFields = false;
}
