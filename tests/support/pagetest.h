// What tests of the pages of the technology dialog have in common.
#pragma once
#include <gtest/gtest.h>

#include "commands/commands.h"
#include "model/services/application.h"
#include "model/services/files.h"
#include "model/services/registry.h"
#include "support/scripteduser.h"
#include "support/statetext.h"
#include "technology/sheet/sizesdialog.h"

/// A design that a person works on, in the editions Pellam, with one file, held in memory.
template <class Design>
class CPageTest : public ::testing::Test {
 protected:
  using Script = std::function<void(CShownPanel&)>;
  using Command = void (*)(CDesign*);

  CPageTest() {
    InstallFiles({[this](const CString&, std::size_t) { return file; },
                  [this](const CString&, std::string_view text) { return file = text, CResult<void>(); }});
  }
  ~CPageTest() override {
    InstallFiles({});
    InstallSettingsStore(nullptr);
    CApplication::SetEditions({"Pellam"});
  }

  /// Opens the dialog on a page, does what the script says, and presses the commands while it is open.
  template <class Page>
  void Work(const Script& script, const std::vector<const char*>& commands, Command command = ChangeSizes) {
    ui.WhenShown<CSizesDialog>([&](CShownDialog& dialog) {
      CShownPanel page = dialog.Show<Page>();
      script(page);
      for (const char* pressed : commands)
        if (dialog.IsOpen()) dialog.Press(pressed);
    });
    command(&design);
  }
  /// The page refuses OK with what is shown and the cursor at `focus`, and the design is as it was.
  template <class Page>
  void ExpectRefusal(const Script& script, const CString& shown, const CString& focus, Command command = ChangeSizes) {
    const CString before = StateOf(design);
    CString stands;
    Work<Page>(
        [&](CShownPanel& page) {
          script(page);
          page.Press("OK");
          stands = page.Focus();
        },
        {"Cancel"}, command);
    EXPECT_EQ(ui.Shown(), shown + "\nevent TechnologyChanged\n");
    EXPECT_EQ(stands, focus);
    EXPECT_EQ(StateOf(design), before);
    EXPECT_TRUE(design.Journal().Steps().empty());
  }

  Design design;
  CString file;
  CScriptedUser ui;
};
