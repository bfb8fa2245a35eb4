// What the operations of automation do.
#include <algorithm>

#include "automation/automation.h"
#include "automation/calls.h"
#include "automation/dialogstate.h"
#include "model/base/textfault.h"
#include "model/services/application.h"
#include "model/services/registry.h"
#include "storage/designfile.h"

std::span<const SOperation> CAutomation::Operations() {
  using enum EPlace;
  using A = CAutomation;
  static const SOperation kOperations[] = {
      {"new", Anywhere, {"design", "kind", "project?"}, &A::New},
      {"open", Anywhere, {"design", "path"}, &A::Open},
      {"save", Anywhere, {"design", "path?", "overwrite?"}, &A::Save},
      {"close", OutsideDialogs, {"design"}, &A::Close},
      {"design", Anywhere, {"design"}, &A::Design},
      {"call", Anywhere, {"command", "design?", "args?"}, &A::Call},
      {"undo", OutsideDialogs, {"design"}, &A::Undo},
      {"redo", OutsideDialogs, {"design"}, &A::Redo},
      {"history", Anywhere, {"design"}, &A::History},
      {"setting", Anywhere, {"key", "name", "value?"}, &A::Setting},
      {"editions", OutsideDialogs, {"names"}, &A::Editions},
      {"selection", Anywhere, {"design", "items"}, &A::Select},
      {"answer", Anywhere, {"with"}, &A::QueueAnswers},
      {"files", Anywhere, {"with"}, &A::QueueFiles},
      {"menu", Anywhere, {"with"}, &A::QueueEntries},
      {"fonts", Anywhere, {"names"}, &A::Fonts},
      {"state", InDialog, {}, &A::State},
      {"page", InDialog, {"class"}, &A::Page},
      {"cell", InDialog, {"row", "col", "text?", "value?", "grid?"}, &A::Cell},
      {"items", InDialog, {"row", "col", "grid?"}, &A::Items},
      {"field", InDialog, {"name", "text?", "value?"}, &A::Field},
      {"focus", InDialog, {"row", "col", "grid?"}, &A::Focus},
      {"select", InDialog, {"rows?", "grid?", "list?", "indexes?"}, &A::SelectRows},
      {"sort", InDialog, {"col", "grid?"}, &A::Sort},
      {"press", InDialog, {"command"}, &A::Press},
  };
  return kOperations;
}

namespace {
/// What a person types or chooses: exactly one of "text" and "value".
CResult<SInput> ReadInput(const CRequest& request) {
  if (request.Has("text") == request.Has("value")) return SFailure{"either \"text\" or \"value\" has to be given"};
  return request.Has("text") ? SInput::Text(request.Text("text")) : SInput::Value(request.Argument("value").scalar);
}

/// What a refusal says; empty when nothing was refused.
CString Refusal(bool done, const CString& why) {
  if (done) return {};
  return why.empty() ? "what was asked for is refused" : why;
}

CString NoCell(int row, int col) { return "there is no cell in row " + IntText(row) + ", column " + IntText(col); }

/// Appends to a queue of texts; an empty list clears it.
void Append(std::deque<CString>& queue, const CStringArray& texts) {
  if (texts.empty()) queue.clear();
  queue.insert(queue.end(), texts.begin(), texts.end());
}

CString StepText(const CUndoJournal::SStep& step) { return step.id ? TextOf(CTextId(step.id)) : CString(step.command); }

void WriteHistory(CJsonWriter& json, const CUndoJournal& journal) {
  const std::span<const CUndoJournal::SStep> steps = journal.Steps();
  const auto write = [&](const CUndoJournal::SStep& step) {
    json.Object([&] {
      json.Key("id").Integer(step.id);
      json.Key("text").Text(StepText(step));
    });
  };
  json.Object([&] {
    json.Key("steps").Array(steps.first(journal.DoneSteps()), write);
    json.Key("redo").Array(steps.subspan(journal.DoneSteps()), write);
    json.Key("open").Array(journal.OpenLevels(), [&](unsigned id) { json.Integer(id); });
    json.Key("changed").Boolean(journal.IsModified());
  });
}
}  // namespace

/// The value of the response.
template <class F>
void CAutomation::Answer(F&& write) {
  CJsonWriter json;
  write(json);
  m_pending->value = json.Json();
}

// ---- Designs

CString CAutomation::New(const CRequest& request) {
  return m_designs.New(request.Text("design"), request.Text("kind"), request.TextOr("project", {}));
}

CString CAutomation::Open(const CRequest& request) {
  return m_designs.Open(request.Text("design"), request.Text("path"));
}

CString CAutomation::Save(const CRequest& request) {
  const bool overwrite = request.Has("overwrite") && *std::get_if<bool>(&request.Argument("overwrite").scalar);
  return m_designs.Save(request.Text("design"), request.TextOr("path", {}), overwrite);
}

CString CAutomation::Close(const CRequest& request) { return m_designs.Close(request.Text("design")); }

CString CAutomation::Design(const CRequest& request) {
  const CTechnology* const technology = m_designs.Find(request.Text("design"));
  if (!technology) return NoDesign(request.Text("design"));
  CString text = DesignText(*technology);
  std::erase(text, '\n');  // texts hold none, theirs are escaped
  Answer([&](CJsonWriter& json) { json.Raw(text); });
  return {};
}

CString CAutomation::Step(const CRequest& request, bool (CUndoJournal::*step)()) {
  CTechnology* const technology = m_designs.Find(request.Text("design"));
  if (!technology) return NoDesign(request.Text("design"));
  CUndoJournal& journal = technology->Journal();
  if (journal.InLevel()) return "an undo level of " + Quoted(request.Text("design")) + " is open";
  return (journal.*step)() ? CString() : CString("there is nothing to ") + request.Operation().name;
}

CString CAutomation::Undo(const CRequest& request) { return Step(request, &CUndoJournal::Undo); }

CString CAutomation::Redo(const CRequest& request) { return Step(request, &CUndoJournal::Redo); }

CString CAutomation::History(const CRequest& request) {
  const CTechnology* const technology = m_designs.Find(request.Text("design"));
  if (!technology) return NoDesign(request.Text("design"));
  Answer([&](CJsonWriter& json) { WriteHistory(json, technology->Journal()); });
  return {};
}

CString CAutomation::Select(const CRequest& request) {
  CDesign* const design = DynamicDowncast<CDesign>(m_designs.Find(request.Text("design")));
  if (!design) return NoDesign(request.Text("design"));
  std::vector<CDesignItem*> items;
  for (const SArgument& named : request.Argument("items").list) {
    const CResult<CDesignItem*> item = FindItem(*design, named);
    if (!item) return item.Error();
    items.push_back(*item);
  }
  design->Selection().Clear();
  for (CDesignItem* item : items) design->Selection().Add(*item);
  return {};
}

CString CAutomation::Call(const CRequest& request) {
  CTechnology* technology = nullptr;
  if (request.Has("design")) {
    technology = m_designs.Find(request.Text("design"));
    if (!technology) return NoDesign(request.Text("design"));
  }
  static const std::vector<SArgument> kNone;
  const auto& args = request.Has("args") ? request.Argument("args").list : kNone;
  const CResult<CValue> result = CallCommand(request.Text("command"), technology, args);
  if (!result) return result.Error();
  if (!m_pending) return {};  // the input ended inside
  CJsonWriter json;
  WriteValue(json, *result);
  m_pending->returned = json.Json();
  return {};
}

// ---- The surroundings

CString CAutomation::Setting(const CRequest& request) {
  const CString &key = request.Text("key"), &name = request.Text("name");
  CSettingValue setting;
  if (!request.Has("value")) {
    const bool found = SettingsStore().Get(key, name, setting);
    Answer([&](CJsonWriter& json) {
      if (!found) return WriteValue(json, {});
      std::visit([&](const auto& value) { WriteValue(json, value); }, setting);
    });
    return {};
  }
  const SArgument& value = request.Argument("value");
  if (!value.Text() && !value.Integer()) return "a setting is a text or a whole number";
  if (value.Text()) {
    setting = *value.Text();
  } else {
    setting = *value.Integer();
  }
  return SettingsStore().Set(key, name, setting) ? CString() : "the value cannot be kept";
}

CString CAutomation::Editions(const CRequest& request) {
  const CStringArray names = request.Texts("names");
  return CApplication::SetEditions(names) ? CString() : "one of the names is no edition";
}

CString CAutomation::QueueAnswers(const CRequest& request) {
  std::vector<EAnswer> answers;
  for (const CString& name : request.Texts("with")) {
    const std::optional<EAnswer> answer = AnswerOf(name);
    if (!answer) return Quoted(name) + " is no answer; they are OK, Cancel, Yes and No";
    answers.push_back(*answer);
  }
  if (answers.empty()) m_answers.clear();
  m_answers.insert(m_answers.end(), answers.begin(), answers.end());
  return {};
}

CString CAutomation::QueueFiles(const CRequest& request) {
  Append(m_files, request.Texts("with"));
  return {};
}

CString CAutomation::QueueEntries(const CRequest& request) {
  Append(m_entries, request.Texts("with"));
  return {};
}

CString CAutomation::Fonts(const CRequest& request) {
  m_fonts = request.Texts("names");
  return {};
}

// ---- The top dialog

/// The grid that is named; without a name the only one.
CResult<CEditGrid*> CAutomation::FindGrid(const CRequest& request) {
  CPanel& panel = Top().ActivePanel();
  const bool single = panel.Grids().size() == 1;
  const CString name = request.TextOr("grid", single ? panel.Grids().front().name : "grid");
  CEditGrid* const grid = panel.FindGrid(name);
  if (!grid) return SFailure{"there is no grid " + Quoted(name)};
  return grid;
}

CString CAutomation::State(const CRequest&) {
  Answer([&](CJsonWriter& json) { WriteDialogState(json, Top()); });
  return {};
}

CString CAutomation::Page(const CRequest& request) {
  auto* const sheet = DynamicDowncast<CPropertySheetPlus>(&Top());
  const bool found = sheet && sheet->SetPage(std::string_view(request.Text("class")));
  return found ? CString() : "there is no page " + Quoted(request.Text("class"));
}

CString CAutomation::Cell(const CRequest& request) {
  const CResult<CEditGrid*> grid = FindGrid(request);
  if (!grid) return grid.Error();
  const CResult<SInput> input = ReadInput(request);
  if (!input) return input.Error();
  CString why;
  const bool done = (*grid)->Enter(request.Integer("row"), request.Integer("col"), *input, why);
  return Refusal(done, why);
}

CString CAutomation::Items(const CRequest& request) {
  const CResult<CEditGrid*> found = FindGrid(request);
  if (!found) return found.Error();
  const CEditGrid& grid = **found;
  const int row = request.Integer("row"), col = request.Integer("col");
  if (!grid.IsValid(row, col)) return NoCell(row, col);
  Answer([&](CJsonWriter& json) { WriteItems(json, grid.Items(row, col), grid.GetCellEditClass(row, col)); });
  return {};
}

CString CAutomation::Field(const CRequest& request) {
  const CResult<SInput> input = ReadInput(request);
  if (!input) return input.Error();
  CFormField* field = Top().ActivePanel().FindField(request.Text("name"));
  if (!field) field = Top().FindField(request.Text("name"));
  if (!field) return "there is no field " + Quoted(request.Text("name"));
  CString why;
  const bool done = field->Enter(*input, why);
  return Refusal(done, why);
}

CString CAutomation::Focus(const CRequest& request) {
  const CResult<CEditGrid*> found = FindGrid(request);
  if (!found) return found.Error();
  CEditGrid& grid = **found;
  const int row = request.Integer("row"), col = request.Integer("col");
  if (!grid.IsValid(row, col) || !grid.IsPresent(row)) return NoCell(row, col);
  grid.SetFocusCell(row, col);
  return {};
}

CString CAutomation::SelectRows(const CRequest& request) {
  if (request.Has("list") != request.Has("indexes") || request.Has("list") == request.Has("rows") ||
      (request.Has("list") && request.Has("grid")))
    return "select takes either \"rows\" or \"list\" and \"indexes\"";
  if (request.Has("rows")) {
    const CResult<CEditGrid*> found = FindGrid(request);
    if (!found) return found.Error();
    CEditGrid& grid = **found;
    const std::vector<int> rows = request.Integers("rows");
    for (const int row : rows)
      if (!grid.IsValid(row, 0) || !grid.IsPresent(row)) return "there is no row " + IntText(row);
    grid.ClearSelection();
    for (const int row : rows) grid.SetRowSel(row);
    return {};
  }
  const CString& name = request.Text("list");
  const std::vector<SListBox*>& lists = Top().ActivePanel().Lists();
  const auto found = std::find_if(lists.begin(), lists.end(), [&](const SListBox* one) { return name == one->name; });
  if (found == lists.end()) return "there is no list " + Quoted(name);
  std::vector<SListBox::SEntry>& entries = (*found)->entries;
  const std::vector<int> indexes = request.Integers("indexes");
  for (const int index : indexes)
    if (index < 0 || static_cast<std::size_t>(index) >= entries.size()) return "there is no entry " + IntText(index);
  for (SListBox::SEntry& entry : entries) entry.selected = false;
  for (const int index : indexes) entries[static_cast<std::size_t>(index)].selected = true;
  if ((*found)->selectionChanged) (*found)->selectionChanged();
  return {};
}

CString CAutomation::Sort(const CRequest& request) {
  const CResult<CEditGrid*> grid = FindGrid(request);
  if (!grid) return grid.Error();
  const int col = request.Integer("col");
  if (col < 0 || col >= (*grid)->GetColumnCount()) return "there is no column " + IntText(col);
  return Top().ActivePanel().SortByColumn(**grid, col) ? CString() : "these rows are in the design's order";
}

CString CAutomation::Press(const CRequest& request) {
  CDialog& dialog = Top();
  CPanel& panel = dialog.ActivePanel();
  const CString& command = request.Text("command");
  CString why;
  if (!dialog.Press(command, why)) return Refusal(false, why);
  if (command == "OK" || command == "Apply") {
    m_lastRefused = dialog.IsRefused();
    if (m_pending) m_pending->applied = !m_lastRefused;
  }
  return panel.Failure();
}
