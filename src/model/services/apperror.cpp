#include "model/services/apperror.h"

#include <utility>

#include "model/services/userinterface.h"

namespace {
struct SError {
  CTextId id;
  CStringArray args;
  CString text;  // of an error without an identifier
};
SError theLast;
CAppError::CLog theLog;
}  // namespace

CAppError::CLog CAppError::InstallLog(CLog log) { return std::exchange(theLog, std::move(log)); }

void CAppError::LogText(const CString& text) {
  if (theLog) theLog(text);
}

void CAppError::Report(CTextId id, CStringArray args) { ShowMessage(id, std::move(args)); }

void CAppError::ReportError(const CString& readyText) { UserInterface().ShowMessage({{}, {}, readyText}); }

void CAppError::Set(CTextId id, CStringArray args) { theLast = {id, std::move(args), {}}; }

void CAppError::SetLastErrorText(const CString& text) { theLast = {{}, {}, text}; }

unsigned CAppError::GetLastError() { return theLast.id; }

const CStringArray& CAppError::GetLastErrorArgs() { return theLast.args; }

bool CAppError::HasLastError() { return theLast.id != 0 || !theLast.text.empty(); }

CString CAppError::GetLastErrorString() { return theLast.id ? TextOf(theLast.id, theLast.args) : theLast.text; }

void CAppError::ReportLastError() {
  if (!HasLastError()) return;
  const SError last = std::exchange(theLast, {});
  if (last.id) {
    Report(last.id, last.args);
  } else {
    ReportError(last.text);
  }
}
