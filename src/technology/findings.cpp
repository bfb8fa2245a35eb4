#include "technology/findings.h"

#include <algorithm>

CString SFinding::Message() const {
  CString said = text.empty() ? TextOf(id, args) : text;
  return more == 0 ? said : TextOf(Text::HoldsForMore, CStringArray{said, IntText(static_cast<std::int64_t>(more))});
}

void CFindings::AppendLastError(SFinding place) {
  place.id = CTextId(CAppError::GetLastError());
  place.args = CAppError::GetLastErrorArgs();
  place.text = place.id ? CString() : CAppError::GetLastErrorString();
  place.isUnnamed = true;
  CAppError::SetLastError(CTextId());
  m_all.push_back(std::move(place));
  m_isRefused = true;
}

void CFindings::Append(const CFindings& more) {
  m_all.insert(m_all.end(), more.m_all.begin(), more.m_all.end());
  m_isRefused |= more.m_isRefused;
}

const SFinding* CFindings::FirstRefusal() const {
  const auto at = std::ranges::find(m_all, EFinding::Refusal, &SFinding::kind);
  return at == m_all.end() ? nullptr : &*at;
}
