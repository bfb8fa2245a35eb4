#include "interchange/importsummary.h"

namespace {
constexpr std::size_t kMaxName = 255;  // bytes

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

void SImportSummary::LeaveOut(std::string_view what) {
  const auto found = leftOut.find(what);
  ++(found != leftOut.end() ? found->second : leftOut[CString(what)]);
}

CStringArray SImportSummary::Lines() const {
  CStringArray lines{"Board format " + IntText(format)};
  for (const SMended& one : mended) {
    const CString args[] = {one.kind, one.was, one.now};
    lines.push_back(FormatText("The %1 \"%2\" is called \"%3\"", args));
  }
  for (const auto& [what, count] : leftOut)
    lines.push_back("Left out: " + IntText(static_cast<std::int64_t>(count)) + " x " + what);
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
  if (name != wanted) m_summary.mended.push_back({kind, CString(wanted), name});
  return name;
}
