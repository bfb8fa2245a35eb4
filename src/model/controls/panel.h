// Panels: what dialogs and pages have in common. A panel is a model of what a person sees: fields, grids, lists and
// commands. Views show it, scripts read it, and both change it only as a person could.
#pragma once
#include <functional>

#include "model/controls/fields.h"
#include "model/controls/grid.h"
#include "model/controls/preview.h"

class CPanel;

/// Hears what changed in an open panel, to show it anew.
class CPanelObserver {
 public:
  virtual ~CPanelObserver() = default;
  virtual void PanelChanged(CPanel& panel) = 0;
};

/// A list of names of which several can be selected.
struct SListBox {
  struct SEntry {
    CString text;
    CRecordBase* record = nullptr;
    bool selected = false;
  };
  const char* name;
  std::vector<SEntry> entries;
  CString description;  // of the entry under the caret
  std::function<void()> selectionChanged;
};

struct SCommand {
  const char* name;
  std::function<void()> run;
  std::function<bool()> enabled;  // none: always
  bool visible = true;
  bool asks = false;  // opens a form for what it adds, so it cannot be run for many rows at once
  bool IsEnabled() const { return !enabled || enabled(); }
};

/// By which column the rows of a grid were last sorted; -1: by none.
struct SGridSort {
  int col = -1;
  bool up = true;
};

struct SNamedGrid {
  const char* name;
  CEditGrid* grid;
};

class CPanel : public CObject {
  TECHSHEET_CLASS(CPanel, CObject)

  virtual CString GetTitle() const = 0;
  const std::vector<SCommand>& Commands() const { return m_commands; }
  const std::vector<CFormField*>& Fields() const { return m_fields; }
  const std::vector<SNamedGrid>& Grids() const { return m_grids; }
  const std::vector<SListBox*>& Lists() const { return m_lists; }
  const SCommand* FindCommand(std::string_view name) const;
  CFormField* FindField(std::string_view name) const;
  CEditGrid* FindGrid(std::string_view name) const;

  /// A click on a column's header. False where row order is the design's order.
  virtual bool SortByColumn(CEditGrid&, int) { return false; }
  virtual SGridSort SortedBy(const CEditGrid&) const { return {}; }
  /// What is drawn beside the panel; nothing for most.
  virtual CPreview GetPreview() const { return {}; }
  /// The field that has the focus, or null.
  CFormField* FocusField() const;

  /// Why the command that was pressed last could not do its work, as a person has been told; empty when it could.
  const CString& Failure() const { return m_failure; }

  void SetObserver(CPanelObserver* observer) { m_observer = observer; }
  void Changed() {
    if (m_observer) m_observer->PanelChanged(*this);
  }

  /// Tells the person that the command at work cannot do it.
  void FailCommand(const CString& why);

 protected:
  void AddCommand(const char* name, std::function<void()> run, std::function<bool()> enabled = {}, bool asks = false) {
    m_commands.push_back({.name = name, .run = std::move(run), .enabled = std::move(enabled), .asks = asks});
  }
  void ShowCommand(std::string_view name, bool visible);
  void DisableCommand(std::string_view name);
  void AddField(CFormField& field) { m_fields.push_back(&field); }
  void AddGrid(const char* name, CEditGrid& grid) { m_grids.push_back({name, &grid}); }
  void AddList(SListBox& list) { m_lists.push_back(&list); }

 private:
  friend class CDialog;
  std::vector<SCommand> m_commands;
  std::vector<CFormField*> m_fields;
  std::vector<SNamedGrid> m_grids;
  std::vector<SListBox*> m_lists;
  CPanelObserver* m_observer = nullptr;
  CString m_failure;
};
