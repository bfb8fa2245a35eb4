// The user interface of subcommands that ask nobody: progress on a terminal, messages on standard error.
#pragma once
#include "model/services/userinterface.h"

/// Questions take their default answer. Progress is shown on one line of standard error, which is gone when the work
/// is done, and only while standard error is a terminal.
class CConsoleInterface : public CNoUserInterface {
 public:
  CConsoleInterface();
  ~CConsoleInterface() override;
  EAnswer ShowMessage(const SMessage& message) override;
  void Progress(const CString& what, std::uint64_t done, std::uint64_t total) override;

 private:
  void ClearLine();
  bool m_isTerminal;
  CString m_line;  // what stands there now
};
