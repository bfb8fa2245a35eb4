#include "model/controls/dialog.h"

CDialog::CDialog(CTextId caption) : m_caption(caption) {
  AddCommand("OK", [this] { OnOk(); });
  AddCommand("Cancel", [this] { OnCancel(); });
}

int CDialog::DoModal() {
  m_open = true;
  m_result = kCancel;
  OnInitDialog();
  UserInterface().DoModal(*this);
  m_open = false;
  m_help = -1;
  OnDestroy();
  return m_result;
}

void CDialog::EndDialog(int result) {
  m_result = result;
  m_open = false;
}

bool CDialog::PressIn(CPanel& panel, std::string_view name, CString& why, bool& found) {
  const SCommand* const command = panel.FindCommand(name);
  found = command != nullptr;
  if (!found) return false;
  if (!command->visible || !command->IsEnabled()) {
    why = TextOf(Text::CommandNotAvailable, CStringArray{CString(name)});
    return false;
  }
  const SCommand chosen = *command;  // the command may change the list it stands in
  if (&panel == this) {
    OnCommand(chosen);
  } else {
    chosen.run();
  }
  panel.Changed();
  return true;
}

bool CDialog::Press(std::string_view name, CString& why) {
  if (name == "Close") name = "Cancel";
  bool found = false;
  CPanel& panel = ActivePanel();
  panel.m_failure.clear();  // of an earlier command
  bool pressed = PressIn(panel, name, why, found);
  if (!found && &panel != this) pressed = PressIn(*this, name, why, found);
  if (!found) why = TextOf(Text::NoSuchCommand, CStringArray{CString(name)});
  return pressed;
}
