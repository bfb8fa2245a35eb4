#include "interchange/importsummary.h"

#include <algorithm>
#include <cstring>

#include "model/base/textfault.h"

namespace {
constexpr std::size_t kMaxName = 255;  // bytes
constexpr std::size_t kShown = 20;     // settings of a kind, where not all are shown

CString CountText(std::size_t count) { return IntText(static_cast<std::int64_t>(count)); }

/// The first `most` bytes or fewer: whole characters, and no blank at the end.
CString CutName(CString name, std::size_t most) {
  if (name.size() <= most) return name;
  while (most > 0 && (name[most] & 0xC0) == 0x80) --most;
  return CString(Trim(std::string_view(name).substr(0, most)));
}

CString MendName(const char* kind, std::string_view wanted) {
  CString name;
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    const auto byte = static_cast<unsigned char>(wanted[i]);
    const bool isLatinControl =
        byte == 0xC2 && i + 1 < wanted.size() && static_cast<unsigned char>(wanted[i + 1]) < 0xA0;
    if (byte < 0x20 || byte == 0x7F || isLatinControl) {
      name += ' ';
      i += isLatinControl ? 1 : 0;
    } else {
      name += byte == '"' ? '\'' : wanted[i];
    }
  }
  name = Trim(name);
  if (name.starts_with('[')) name[0] = '(';
  return name.empty() ? kind : CutName(std::move(name), kMaxName);
}
}  // namespace

void CImportSummary::Say(const char* kind, CString sentence) {
  auto at = std::find_if(m_settings.begin(), m_settings.end(),
                         [&](const auto& one) { return std::strcmp(one.first, kind) == 0; });
  if (at == m_settings.end()) at = m_settings.insert(at, {kind, {}});
  at->second.push_back(std::move(sentence));
}

void CImportSummary::Count(Counts& counts, std::string_view what, std::string_view example) {
  auto at = counts.find(what);
  if (at == counts.end()) at = counts.emplace(what, SCount{0, CString(example)}).first;
  ++at->second.count;
}

bool CImportSummary::IsShortened() const {
  return !m_words.empty() ||
         std::any_of(m_settings.begin(), m_settings.end(), [](const auto& one) { return one.second.size() > kShown; });
}

CStringArray CImportSummary::Lines(bool verbose) const {
  CStringArray lines;
  for (const auto& [kind, sentences] : m_settings) {
    const std::size_t shown = verbose ? sentences.size() : std::min(sentences.size(), kShown);
    lines.insert(lines.end(), sentences.begin(), sentences.begin() + static_cast<std::ptrdiff_t>(shown));
    const CString args[] = {CountText(sentences.size() - shown), kind};
    if (shown < sentences.size()) lines.push_back(FormatText("... and %1 more %2", args));
  }
  const auto add = [&](const char* what, const Counts& counts) {
    for (const auto& [kind, count] : counts) {
      lines.push_back(what + kind + " (" + CountText(count.count) + ')');
      if (!count.example.empty()) lines.back() += ", such as " + count.example;
    }
  };
  add("Mended: ", m_mended);
  add("Left out: ", m_leftOut);
  std::size_t words = 0;
  for (const auto& [word, count] : m_words) words += count.count;
  if (words > 0) lines.push_back("Left out beside: words that are no settings (" + CountText(words) + ')');
  if (verbose) add("  ", m_words);
  return lines;
}

CString CImportNames::TakeUnlisted(const char* kind, std::string_view wanted) {
  CString base = MendName(kind, wanted);
  STaken& taken = m_taken[kind];
  if (taken.names.insert(base).second) return base;
  for (int& number = taken.numbers.try_emplace(base, 1).first->second;;) {
    const CString suffix = ' ' + IntText(++number);
    CString name = CutName(base, kMaxName - suffix.size()) + suffix;
    if (taken.names.insert(name).second) return name;
  }
}

CString CImportNames::Take(const char* kind, std::string_view wanted) {
  CString name = TakeUnlisted(kind, wanted);
  const CString args[] = {kind, Quoted(wanted), Quoted(name)};
  if (name != wanted) m_summary.Say("names", FormatText("The %1 %2 is called %3", args));
  return name;
}

CString CImportNames::TakeForItem(const char* kind, std::string_view wanted) {
  CString name = TakeUnlisted(kind, wanted);
  const CString args[] = {kind, Quoted(wanted), Quoted(name)};
  if (name != wanted) m_summary.MendItem(FormatText("%1 names", args), FormatText("%2, now %3", args));
  return name;
}
