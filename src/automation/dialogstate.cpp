#include "automation/dialogstate.h"

#include "model/controls/sheet.h"

void WriteValue(CJsonWriter& out, const CValue& value) {
  if (const bool* const flag = std::get_if<bool>(&value)) {
    out.Boolean(*flag);
  } else if (const std::int64_t* const number = std::get_if<std::int64_t>(&value)) {
    out.Integer(*number);
  } else if (const CString* const text = std::get_if<CString>(&value)) {
    out.Text(*text);
  } else {
    out.Null();
  }
}

void WriteItems(CJsonWriter& out, const CComboItems& items, EEditor editor) {
  out.Array(items, [&](const SComboItem& item) {
    out.Object([&] {
      WriteValue(out.Key("value"), OuterItemValue(item, editor));
      out.Key("text").Text(item.text);
    });
  });
}

namespace {
void WriteField(CJsonWriter& out, const CFormField& field) {
  out.Object([&] {
    out.Key("name").Text(field.Name());
    out.Key("kind").Text(field.KindName());
    out.Key("text").Text(field.GetText());
    WriteValue(out.Key("value"), field.GetOuterValue());
    out.Key("enabled").Boolean(field.IsEnabled());
    out.Key("visible").Boolean(field.IsVisible());
    const CComboBox* const combo = DynamicDowncast<CComboBox>(&field);
    if (combo) WriteItems(out.Key("items"), combo->GetItems(), combo->Editor());
    if (field.IsKindOf(CColourComboBox::GetThisClass()))
      WriteItems(out.Key("items"), field.GetItems(), EEditor::Colour);
  });
}

void WriteCommand(CJsonWriter& out, const SCommand& command) {
  out.Object([&] {
    out.Key("name").Text(command.name);
    out.Key("enabled").Boolean(command.IsEnabled());
    out.Key("visible").Boolean(command.visible);
  });
}

void WriteCell(CJsonWriter& out, const CEditGrid& grid, int row, int col) {
  const SCell& cell = grid.Cell(row, col);
  out.Object([&] {
    out.Key("text").Text(cell.text);
    WriteValue(out.Key("value"), grid.OuterValue(row, col));
    out.Key("enabled").Boolean(cell.enabled);
    out.Key("modified").Boolean(grid.GetCellModified(row, col));
    const std::map<int, CString>& problems = grid.Row(row).problems;
    if (const auto problem = problems.find(col); problem != problems.end()) out.Key("problem").Text(problem->second);
    WriteValue(out.Key("editor"), cell.editor == EEditor::None ? CValue() : CString(EditorName(cell.editor)));
    WriteValue(out.Key("colour"), cell.hasBackground ? CValue(ColourText(CColour{cell.background})) : CValue());
  });
}

void WriteRow(CJsonWriter& out, const CEditGrid& grid, int row) {
  out.Object([&] {
    out.Key("row").Integer(row);
    out.Key("shown").Boolean(grid.IsPresent(row));
    out.Key("modified").Boolean(grid.GetRowModified(row));
    const CRecordBase* const record = grid.GetItemData(row);
    WriteValue(out.Key("record"), record ? CValue(record->RecordName()) : CValue());
    out.Key("cells").Array([&] {
      for (int col = 0; col < grid.GetColumnCount(); ++col) WriteCell(out, grid, row, col);
    });
  });
}

void WriteGrid(CJsonWriter& out, const CEditGrid& grid) {
  out.Object([&] {
    out.Key("headers").Array([&] {
      for (int col = 0; col < grid.GetColumnCount(); ++col)
        out.Object([&] {
          out.Key("id").Integer(grid.Column(col).header);
          out.Key("text").Text(grid.Column(col).title);
        });
    });
    out.Key("rows").Array([&] {
      for (int row = 1; row < grid.GetRowCount(); ++row) WriteRow(out, grid, row);
    });
    const SGridPlace focus = grid.GetFocusCell();
    if (grid.IsValid(focus.row, focus.col)) {
      out.Key("focus").Array([&] { out.Integer(focus.row).Integer(focus.col); });
    } else {
      out.Key("focus").Null();
    }
    out.Key("selected").Array(grid.SelectedRows(), [&](int row) { out.Integer(row); });
  });
}

void WriteList(CJsonWriter& out, const SListBox& list) {
  out.Object([&] {
    out.Key("entries").Array(list.entries, [&](const SListBox::SEntry& entry) {
      out.Object([&] {
        out.Key("text").Text(entry.text);
        out.Key("selected").Boolean(entry.selected);
      });
    });
    out.Key("description").Text(list.description);
  });
}

void WriteTitle(CJsonWriter& out, const CPanel& panel) {
  out.Key("class").Text(panel.GetRuntimeClass()->name);
  out.Key("title").Text(panel.GetTitle());
}
}  // namespace

void WriteDialogState(CJsonWriter& out, CDialog& dialog) {
  CPropertySheetPlus* const sheet = DynamicDowncast<CPropertySheetPlus>(&dialog);
  std::vector<CPanel*> panels = {&dialog};
  if (&dialog.ActivePanel() != &dialog) panels.push_back(&dialog.ActivePanel());
  out.Object([&] {
    WriteTitle(out, dialog);
    out.Key("caption").Integer(dialog.GetCaption());
    out.Key("pages").Array([&] {
      if (!sheet) return;
      for (const CPropertyPagePlus* page : sheet->Pages()) out.Object([&] { WriteTitle(out, *page); });
    });
    if (sheet && sheet->GetActivePage()) out.Key("page").Text(sheet->GetActivePage()->GetRuntimeClass()->name);
    out.Key("fields").Array([&] {
      for (const CPanel* panel : panels)
        for (const CFormField* field : panel->Fields()) WriteField(out, *field);
    });
    out.Key("commands").Array([&] {
      for (const CPanel* panel : panels)
        for (const SCommand& command : panel->Commands()) WriteCommand(out, command);
    });
    out.Key("grids").Object([&] {
      for (const CPanel* panel : panels)
        for (const SNamedGrid& named : panel->Grids()) WriteGrid(out.Key(named.name), *named.grid);
    });
    out.Key("lists").Object([&] {
      for (const CPanel* panel : panels)
        for (const SListBox* list : panel->Lists()) WriteList(out.Key(list->name), *list);
    });
    const CFormField* focus = nullptr;
    for (const CPanel* panel : panels)
      if (!focus) focus = panel->FocusField();
    WriteValue(out.Key("focus"), focus ? CValue(CString(focus->Name())) : CValue());
    WriteValue(out.Key("help"), dialog.GetHelpContext() < 0 ? CValue() : CValue(std::int64_t{dialog.GetHelpContext()}));
  });
}
