#include "interchange/sexpression.h"

#include <algorithm>
#include <array>

namespace {
constexpr bool IsBreak(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '(' || c == ')' || c == '\0';
}
constexpr auto kBreaks = [] {
  std::array<bool, 256> breaks{};
  for (std::size_t i = 0; i < breaks.size(); ++i) breaks[i] = IsBreak(static_cast<char>(i));
  return breaks;
}();
bool EndsWord(char c) { return kBreaks[static_cast<unsigned char>(c)]; }

/// Digits of an escape in base 8 or 16, at most `most` of them. False when there is none.
bool ReadCode(std::string_view text, std::size_t& at, unsigned base, std::size_t most, char& out) {
  unsigned code = 0;
  std::size_t digits = 0;
  for (; digits < most && at < text.size(); ++digits, ++at) {
    const char c = LowerAscii(text[at]);
    const unsigned digit = IsDigit(c)             ? static_cast<unsigned>(c - '0')
                           : c >= 'a' && c <= 'f' ? static_cast<unsigned>(c - 'a' + 10)
                                                  : base;
    if (digit >= base) break;
    code = code * base + digit;
  }
  if (digits > 0) out = static_cast<char>(code);
  return digits > 0;
}
}  // namespace

bool CSNode::IsList() const { return m_tree && !m_tree->m_nodes[m_index].word; }
bool CSNode::IsQuoted() const { return IsWord() && m_tree->m_text[At()] == '"'; }
std::string_view CSNode::Text() const {
  if (!IsWord()) return {};
  const CSList::SNode& node = m_tree->m_nodes[m_index];
  return {node.word, node.length};
}
std::string_view CSNode::Tag() const { return IsList() ? CSNode(m_tree, m_index + 1).Text() : std::string_view(); }
std::size_t CSNode::At() const { return m_tree ? m_tree->m_nodes[m_index].at : 0; }

CSNode CSNode::Value(std::size_t index) const {
  for (const CSNode value : *this)
    if (index-- == 0) return value;
  return {};
}

CSNode CSNode::Find(std::string_view tag) const {
  for (const CSNode value : *this)
    if (value.Tag() == tag) return value;
  return {};
}

CSNode::Iterator& CSNode::Iterator::operator++() {
  m_index = m_tree->m_nodes[m_index].end;
  return *this;
}
CSNode::Iterator CSNode::begin() const { return IsList() ? Iterator(m_tree, m_index + 2) : end(); }
CSNode::Iterator CSNode::end() const { return {m_tree, m_tree ? m_tree->m_nodes[m_index].end : 0}; }

CSList::CSList(const CString& text) : m_text(text) {
  if (m_text.size() > kMaxSize) throw STextFault{kMaxSize, "the file is larger than 256 MB"};
  RequireText(m_text);
  Read();
}

void CSList::AddNode(const char* word, std::size_t length, std::size_t at) {
  if (m_nodes.size() == kMaxNodes) throw STextFault{at, "the file holds more than 16777216 words and lists"};
  m_nodes.push_back({word, static_cast<std::uint32_t>(length), static_cast<std::uint32_t>(at),
                     static_cast<std::uint32_t>(m_nodes.size() + 1)});
}

void CSList::Read() {
  const char* const text = m_text.c_str();  // ends with a NUL, which no text holds
  std::vector<std::uint32_t> open;
  std::size_t at = m_text.starts_with("\xEF\xBB\xBF") ? 3 : 0;
  bool lineBegins = true, tagWanted = false;
  for (;; lineBegins = false) {
    for (; text[at] == ' ' || text[at] == '\t' || text[at] == '\n' || text[at] == '\r'; ++at)
      lineBegins |= text[at] == '\n' || text[at] == '\r';
    const char c = text[at];
    if (c == '#' && lineBegins) {
      at = std::min(m_text.find_first_of("\r\n", at), m_text.size());
      continue;
    }
    if (c == '\0') break;
    if (open.empty() && !m_nodes.empty()) throw STextFault{at, "nothing may stand behind the list that is the board"};
    if (tagWanted && (c == '(' || c == ')' || c == '"'))
      throw STextFault{at, "a list must begin with a word without quotation marks"};
    if (c == '(') {
      if (open.size() == kMaxDepth) throw STextFault{at, "lists stand in lists more than 64 deep"};
      open.push_back(static_cast<std::uint32_t>(m_nodes.size()));
      AddNode(nullptr, 0, at++);
      tagWanted = true;
      continue;
    }
    if (open.empty()) throw STextFault{at, "a board begins with an opening bracket"};
    tagWanted = false;
    if (c == ')') {
      m_nodes[open.back()].end = static_cast<std::uint32_t>(m_nodes.size());
      open.pop_back();
      ++at;
    } else if (c == '"') {
      ReadQuoted(at);
    } else {
      const std::size_t from = at;
      bool hasMark = false;
      for (; !EndsWord(text[at]); ++at) hasMark |= text[at] == '"';
      AddNode(text + from, at - from, from);
      if (hasMark) m_wordsWithMarks.emplace_back(text + from, at - from);
    }
  }
  if (m_nodes.empty()) throw STextFault{at, "the file is empty"};
  if (open.empty()) return;
  const STextPlace place = PlaceIn(m_text, m_nodes[open.back()].at);
  const CString args[] = {IntText(static_cast<std::int64_t>(place.line)),
                          IntText(static_cast<std::int64_t>(place.column))};
  throw STextFault{m_text.size(), FormatText("the file ends before the list that begins at line %1, column %2", args)};
}

void CSList::ReadQuoted(std::size_t& at) {
  const std::size_t from = at + 1;
  std::size_t to = from;
  bool resolve = false;
  for (;; ++to) {
    to = std::min(m_text.find_first_of("\"\\\r\n", to), m_text.size());
    if (to == m_text.size() || m_text[to] == '\r' || m_text[to] == '\n')
      throw STextFault{at, "this quotation mark has no counterpart on its line"};
    if (m_text[to] == '"') break;
    resolve = true;
    if (to + 1 < m_text.size() && (m_text[to + 1] == '"' || m_text[to + 1] == '\\')) ++to;
  }
  if (!EndsWord(m_text.c_str()[to + 1])) throw STextFault{to + 1, "a blank is missing behind this quotation mark"};
  const std::string_view raw = std::string_view(m_text).substr(from, to - from);
  const std::string_view word = resolve ? Resolve(raw, at) : raw;
  AddNode(word.data(), word.size(), at);
  at = to + 1;
}

std::string_view CSList::Resolve(std::string_view quoted, std::size_t wordAt) {
  static constexpr std::string_view kLetters = "abfnrtv", kMeanings = "\a\b\f\n\r\t\v";
  CString& text = m_resolved.emplace_back();
  for (std::size_t at = 0; at < quoted.size();) {
    char c = quoted[at++];
    if (c == '\\') {  // never the last: the quotation mark behind it would not end the word
      const char letter = quoted[at];
      if (const std::size_t found = kLetters.find(letter); found != kLetters.npos) {
        c = kMeanings[found];
        ++at;
      } else if (letter == '"' || letter == '\\') {
        c = letter;
        ++at;
      } else {  // \x41 and \101; any other backslash stands for itself, as old files have it in paths
        std::size_t digits = letter == 'x' ? at + 1 : at;
        if (ReadCode(quoted, digits, letter == 'x' ? 16 : 8, letter == 'x' ? 2 : 3, c)) at = digits;
      }
    }
    text += c;
  }
  if (!IsValidUtf8(text)) throw STextFault{wordAt, "what the backslashes stand for is no UTF-8"};
  return text;
}
