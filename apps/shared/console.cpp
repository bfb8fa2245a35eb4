#include "shared/console.h"

#include <csignal>
#include <cstdio>

void IgnoreSignalsOfWriting() {
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
}

void TellOnStandardError(std::string_view text) {
  if (text.empty()) return;
  CString lines = VisibleText(text);
  if (!lines.ends_with('\n')) lines += '\n';
  std::fwrite(lines.data(), 1, lines.size(), stderr);
}
