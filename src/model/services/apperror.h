// Errors on their way from the design model to the page that shows them. An error keeps its identifier, its values and
// the field at fault; its text is made when it is shown.
#pragma once
#include <functional>

#include "model/base/catalogue.h"

/// Something that can take the keyboard focus, so that an error can send a person back to it.
class CFocusable {
 public:
  virtual ~CFocusable() = default;
  virtual void SetFocus() = 0;
};

class CAppError {
 public:
  /// Shows a message at once.
  template <class... Args>
  static void ReportError(CTextId id, const Args&... args) {
    Report(id, {CString(args)...});
  }
  template <class... Args>
  static void ReportError(CFocusable& field, CTextId id, const Args&... args) {
    Report(id, {CString(args)...});
    field.SetFocus();
  }
  static void ReportError(const CString& readyText);

  /// Keeps an error to be reported later; 0 clears it. The latest one stays.
  template <class... Args>
  static void SetLastError(CTextId id, const Args&... args) {
    Set(id, {CString(args)...});
  }
  /// The same for a ready text, such as a reason that the system gave.
  static void SetLastErrorText(const CString& text);
  static unsigned GetLastError();  // 0: none, or a ready text
  static bool HasLastError();
  static const CStringArray& GetLastErrorArgs();
  static CString GetLastErrorString();
  /// Shows the kept error and clears it; nothing when there is none.
  static void ReportLastError();

  /// Notes a mistake of the program, about which no person can do anything, in the log that the program installed.
  template <class... Args>
  static void Log(CTextId id, const Args&... args) {
    LogText(TextOf(id, CStringArray{CString(args)...}));
  }
  /// `log` takes one text after the other; none at first. Returns the one before.
  using CLog = std::function<void(const CString& text)>;
  static CLog InstallLog(CLog log);

  static void LogText(const CString& text);
  static void Report(CTextId id, CStringArray args);
  static void Set(CTextId id, CStringArray args);
};
