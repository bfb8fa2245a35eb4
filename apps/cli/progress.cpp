#include "cli/progress.h"

#include <unistd.h>

#include <cstdio>

#include "shared/console.h"

CConsoleInterface::CConsoleInterface() : m_isTerminal(::isatty(STDERR_FILENO) != 0) {}

CConsoleInterface::~CConsoleInterface() { ClearLine(); }

EAnswer CConsoleInterface::ShowMessage(const SMessage& message) {
  ClearLine();
  TellOnStandardError(message.text);
  return message.Default();
}

void CConsoleInterface::Progress(const CString& what, std::uint64_t done, std::uint64_t total) {
  if (!m_isTerminal) return;
  if (done >= total) return ClearLine();
  CString line = VisibleText(what, true) + " ... " + IntText(static_cast<std::int64_t>(done * 100 / total)) + "%";
  if (line == m_line) return;
  std::fprintf(stderr, "\r%s\x1B[K", line.c_str());  // the rest of the line is cleared
  m_line = std::move(line);
}

void CConsoleInterface::ClearLine() {
  if (!m_line.empty()) std::fputs("\r\x1B[K", stderr);
  m_line.clear();
}
