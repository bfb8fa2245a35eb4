#include "automation/automation.h"

#include <algorithm>
#include <istream>
#include <new>
#include <ostream>

#include "automation/dialogstate.h"
#include "commands/commands.h"
#include "model/base/jsontext.h"
#include "model/base/textfault.h"
#include "model/services/report.h"

namespace {
constexpr const char* kAnswers[] = {"OK", "Cancel", "Yes", "No"};  // by EAnswer
constexpr std::size_t kMaxDialogs = 64;
constexpr const char* kLeftOpen = "The script ended while the dialog \"%1\" was open, which has been cancelled.";

const char* NameOf(EAnswer answer) { return kAnswers[static_cast<std::size_t>(answer)]; }

std::span<const EAnswer> Offered(EButtons buttons) {
  static constexpr EAnswer kOk[] = {EAnswer::Ok};
  static constexpr EAnswer kOkCancel[] = {EAnswer::Ok, EAnswer::Cancel};
  static constexpr EAnswer kYesNo[] = {EAnswer::Yes, EAnswer::No};
  switch (buttons) {
    case EButtons::OkCancel: return kOkCancel;
    case EButtons::YesNo: return kYesNo;
    case EButtons::Ok: break;
  }
  return kOk;
}

template <class T>
std::optional<T> TakeFirst(std::deque<T>& queue) {
  if (queue.empty()) return {};
  T first = std::move(queue.front());
  queue.pop_front();
  return first;
}

CString ListOf(const std::vector<CString>& json) {
  CJsonWriter out;
  return out.Array(json, [&](const CString& one) { out.Raw(one); }).Json();
}
}  // namespace

CAutomation::CAutomation(std::istream& in, std::ostream& out)
    : m_in(in),
      m_out(out),
      m_subscription([this](const SEvent& event) {
        Note(m_events, [&](CJsonWriter& json) {
          json.Key("name").Text(event.name);
          if (event.subject) {
            json.Key("arg1").Text(m_designs.NameOf(*event.subject));
          } else {
            json.Key("arg1").Integer(event.arg1);
          }
          json.Key("arg2").Integer(event.arg2);
        });
      }),
      m_installed(*this) {}

bool CAutomation::Run() {
  InitSetOpInterface();
  Set_RegisterIgnoreDesignChange();
  Loop(nullptr);
  if (m_unfinished.empty() && m_lastRefused) m_unfinished = "The last OK or Apply was refused.";
  return m_allOk;
}

// ---- The loop

void CAutomation::Loop(CDialog* dialog) {
  while (!dialog || dialog->IsOpen()) {
    Respond();
    CString line;
    if (!NextLine(line)) {
      CString why;
      if (!dialog) return;
      m_unfinished += (m_unfinished.empty() ? "" : " ") + FormatText(kLeftOpen, CStringArray{dialog->GetTitle()});
      dialog->Press("Cancel", why);
      return;
    }
    m_pending.emplace();
    Do(line);
  }
}

/// The next line that is a request; at most one byte more of it than a request may have. False at the end.
bool CAutomation::NextLine(CString& line) {
  std::streambuf& in = *m_in.rdbuf();
  constexpr int kEnd = std::streambuf::traits_type::eof();
  while (m_out) {
    line.clear();
    int c = in.sbumpc();
    if (c == kEnd) return false;
    for (; c != kEnd && c != '\n'; c = in.sbumpc())
      if (line.size() <= CRequest::kMaxLength) line += static_cast<char>(c);
    if (!line.starts_with('#') && !Trim(line).empty()) return true;
  }
  return false;
}

void CAutomation::Do(const CString& line) {
  const CResult<CRequest> request = CRequest::Read(line, Operations());
  if (!request) return Fail(request.Error());
  const SOperation& operation = request->Operation();
  if (operation.place == EPlace::InDialog && m_dialogs.empty())
    return Fail(CString(operation.name) + " needs an open dialog");
  if (operation.place == EPlace::OutsideDialogs && !m_dialogs.empty())
    return Fail(CString(operation.name) + " cannot be used while a dialog is open");
  try {
    if (const CString why = (this->*operation.run)(*request); !why.empty()) Fail(why);
  } catch (const std::bad_alloc&) {
    Fail(TextOf(Text::MemoryRanOut));
  }
}

std::optional<EAnswer> CAutomation::AnswerOf(const CString& name) {
  const auto found = std::find(std::begin(kAnswers), std::end(kAnswers), name);
  if (found == std::end(kAnswers)) return {};
  return static_cast<EAnswer>(found - std::begin(kAnswers));
}

void CAutomation::Fail(const CString& why) {
  m_allOk = false;
  if (m_pending && m_pending->error.empty()) m_pending->error = why;
}

void CAutomation::Respond() {
  if (!m_pending) return;
  CJsonWriter json;
  json.Object([&] {
    json.Key("ok").Boolean(m_pending->error.empty());
    if (!m_pending->error.empty()) json.Key("error").Text(m_pending->error);
    json.Key("messages").Raw(ListOf(std::exchange(m_messages, {})));
    json.Key("events").Raw(ListOf(std::exchange(m_events, {})));
    if (!m_redrawn.empty()) json.Key("redraw").Raw(ListOf(std::exchange(m_redrawn, {})));
    if (!m_dialogs.empty()) {
      json.Key("dialog").Object([&] {
        json.Key("class").Text(Top().GetRuntimeClass()->name);
        json.Key("caption").Integer(Top().GetCaption());
        if (const auto* const page = DynamicDowncast<CPropertyPagePlus>(&Top().ActivePanel()))
          json.Key("page").Text(page->GetRuntimeClass()->name);
        json.Key("depth").Integer(static_cast<std::int64_t>(m_dialogs.size()));
      });
    }
    if (m_pending->applied) json.Key("applied").Boolean(*m_pending->applied);
    if (!m_pending->value.empty()) json.Key("value").Raw(m_pending->value);
    if (!m_pending->returned.empty()) json.Key("returned").Raw(m_pending->returned);
  });
  m_pending.reset();
  m_out << JsonOfVisibleText(json.Json()) << '\n' << std::flush;
  if (!m_out) m_allOk = false;
}

/// Notes something shown or sent, with its running number.
template <class F>
void CAutomation::Note(std::vector<CString>& where, F&& write) {
  CJsonWriter json;
  json.Object([&] {
    json.Key("n").Integer(++m_count);
    write(json);
  });
  where.push_back(json.Json());
}

// ---- What the dialogs show

int CAutomation::DoModal(CDialog& dialog) {
  if (m_dialogs.size() == kMaxDialogs) {
    Fail("no more dialogs can be open at once");
    return CDialog::kCancel;
  }
  struct SShown {
    std::vector<CDialog*>& dialogs;
    ~SShown() { dialogs.pop_back(); }  // also when memory runs out
  };
  m_dialogs.push_back(&dialog);
  const SShown shown{m_dialogs};
  Loop(&dialog);
  return CDialog::kCancel;  // the dialog knows its own result
}

EAnswer CAutomation::ShowMessage(const SMessage& message) {
  EAnswer answer = message.Default();
  const std::span<const EAnswer> offered = Offered(message.buttons);
  if (message.buttons != EButtons::Ok) {
    if (const std::optional<EAnswer> wanted = TakeFirst(m_answers)) {
      if (std::find(offered.begin(), offered.end(), *wanted) != offered.end()) {
        answer = *wanted;
      } else {
        Fail(CString("the question does not offer ") + NameOf(*wanted) + ": " + message.text);
      }
    }
  }
  Note(m_messages, [&](CJsonWriter& json) {
    json.Key("id").Integer(message.id);
    json.Key("args").Texts(message.args);
    json.Key("text").Text(message.text);
    json.Key("buttons").Array(offered, [&](EAnswer one) { json.Text(NameOf(one)); });
    json.Key("answer").Text(NameOf(answer));
  });
  return answer;
}

void CAutomation::Beep(int sound) {
  Note(m_messages, [&](CJsonWriter& json) { json.Key("beep").Integer(sound); });
}

void CAutomation::OpenFile(const CString& path) {
  Note(m_messages, [&](CJsonWriter& json) { json.Key("opened").Text(path); });
}

void CAutomation::ViewReport(const CReportFile& report) {
  Note(m_messages, [&](CJsonWriter& json) {
    json.Key("report").Integer(report.Title());
    CStringArray texts;
    for (const SReportLine& line : report.Lines()) texts.push_back(line.text);
    json.Key("lines").Texts(texts);
    json.Key("problems").Array([&] {
      for (const SReportLine& line : report.Lines())
        json.Object([&] {
          json.Key("id").Integer(line.id);
          json.Key("args").Texts(line.args);
          json.Key("text").Text(line.text);
        });
    });
  });
}

std::optional<CString> CAutomation::ChooseFile(const SFileChooser& chooser) {
  std::optional<CString> path = TakeFirst(m_files);
  if (path && path->empty()) path.reset();
  if (path && chooser.kind == SFileChooser::EKind::Save && !chooser.extension.empty() &&
      path->find('.', path->rfind('/') + 1) == CString::npos)
    *path += '.' + chooser.extension;
  static constexpr const char* kKinds[] = {"open", "save", "folder"};  // by EKind
  Note(m_messages, [&](CJsonWriter& json) {
    json.Key("chooser").Object([&] {
      json.Key("kind").Text(kKinds[static_cast<std::size_t>(chooser.kind)]);
      json.Key("proposed").Text(chooser.proposed);
    });
    WriteValue(json.Key("chosen"), path ? CValue(*path) : CValue());
  });
  return path;
}

int CAutomation::ShowMenu(const CStringArray& entries) {
  const std::optional<CString> wanted = TakeFirst(m_entries);
  const auto found = wanted ? std::find(entries.begin(), entries.end(), *wanted) : entries.end();
  const bool chosen = found != entries.end();
  if (wanted && !chosen) Fail("the menu has no entry " + Quoted(*wanted));
  Note(m_messages, [&](CJsonWriter& json) {
    json.Key("menu").Texts(entries);
    WriteValue(json.Key("chosen"), chosen ? CValue(*found) : CValue());
  });
  return chosen ? static_cast<int>(found - entries.begin()) : -1;
}

void CAutomation::Redraw(const CObject&, const CBox* area) {
  CJsonWriter json;
  if (area) {
    json.Array([&] { json.Integer(area->left).Integer(area->bottom).Integer(area->right).Integer(area->top); });
  } else {
    json.Null();
  }
  m_redrawn.push_back(json.Json());
}
