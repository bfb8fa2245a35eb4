#include "storage/jsonwriter.h"

#include "model/base/jsontext.h"

void CJsonWriter::Separate() {
  if (!m_first) m_out += ',';
  m_first = false;
}

CJsonWriter& CJsonWriter::Key(std::string_view name) {
  Text(name);
  m_out += ':';
  m_first = true;
  return *this;
}

CJsonWriter& CJsonWriter::Text(std::string_view text) {
  Separate();
  if (IsValidUtf8(text)) {
    AppendJsonText(m_out, text);
    return *this;
  }
  CString mended;
  while (!text.empty()) {
    std::size_t length = 1;  // of the character that the text begins with
    while (length <= 4 && length <= text.size() && !IsValidUtf8(text.substr(0, length))) ++length;
    const bool valid = length <= 4 && length <= text.size();
    mended += valid ? text.substr(0, length) : "\xEF\xBF\xBD";
    text.remove_prefix(valid ? length : 1);
  }
  AppendJsonText(m_out, mended);
  return *this;
}

CJsonWriter& CJsonWriter::Integer(std::int64_t value) {
  Separate();
  AppendInt(m_out, value);
  return *this;
}

CJsonWriter& CJsonWriter::Boolean(bool value) { return Raw(value ? "true" : "false"); }

CJsonWriter& CJsonWriter::Null() { return Raw("null"); }

CJsonWriter& CJsonWriter::Raw(std::string_view json) {
  Separate();
  m_out += json;
  return *this;
}
