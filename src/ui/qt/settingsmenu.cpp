#include "ui/qt/settingsmenu.h"

#include <QActionGroup>
#include <algorithm>

#include "commands/commands.h"
#include "technology/sheet/pages.h"
#include "technology/sheet/pendingpages.h"
#include "ui/qt/commandtext.h"
#include "ui/qt/document.h"
#include "ui/qt/text.h"

namespace {
/// A command that opens a dialog.
struct SDialogCommand {
  const char* name;
  CTextId text;
  void (*run)(CDesign*);
  std::string_view page;  // the class of the page that the design must have, empty for none
  bool isForPage;         // reduced editions show the pages that belong to that one alone
  const char* shortcut;
  CTextId inSchematics{};  // where that page has another title there
};
constexpr SDialogCommand kDialogCommands[] = {
    {"ChangeSizes", Text::MenuTechnology, ChangeSizes, "", false, "Ctrl+T"},
    {"ChangeLayers", Text::MenuLayers, ChangeLayers, "CLayersPage", true, "Ctrl+L"},
    {"ChangeLayerTypes", Text::MenuLayerTypes, ChangeLayerTypes, "CLayersPage", false, ""},
    {"ChangeLayerSpans", Text::MenuLayerSpans, ChangeLayerSpans, "CLayerSpansPage", false, ""},
    {"ChangePadStyles", Text::MenuPadStyles, ChangePadStyles, "CPadStylesPage", false, ""},
    {"ChangeTrackStyles", Text::MenuTrackStyles, ChangeTrackStyles, "CTrackStylesPage", false, "",
     Text::MenuWireStyles},
    {"ChangeTextStyles", Text::MenuTextStyles, ChangeTextStyles, "CTextStylesPage", false, ""},
    {"ChangeNetClasses", Text::MenuNetClasses, ChangeNetClasses, "CNetClassesPage", false, ""},
    {"ChangeNets", Text::MenuNets, ChangeNets, "CNetsPage", false, ""},
    {"ChangeSpacings", Text::MenuSpacings, ChangeSpacings, "CSpacingsPage", false, ""},
    {"ChangeWireLinkLengths", Text::MenuWireLengths, ChangeWireLinkLengths, "CWireLengthsPage", false, ""},
    {"ChangeUnits", Text::MenuUnits, ChangeUnits, "", false, ""},
};

/// Whether there is anything to do there, in designs of every kind where none is given.
bool IsOffered(const SDialogCommand& command, const CDesign* design) {
  return command.page.empty() || std::ranges::any_of(SheetPages(), [&](const SSheetPage& page) {
           const CRuntimeClass* const shown = page.pageClass();
           return shown->name == command.page && shown->base != CPendingPage::GetThisClass() &&
                  (!design || HasPage(page, *design, command.isForPage ? shown : nullptr));
         });
}

/// A command that changes how a design is shown. `isOn` is none for those that only happen.
struct SViewCommand {
  const char* name;
  CTextId text;
  void (*run)(bool on, CDesignDrawing& drawing);
  bool (*isOn)(const CDesignColours& colours);
  const char* shortcut;
};
constexpr SViewCommand kViewCommands[] = {
    {"SetAllDisplayed", Text::MenuShowAllLayers,
     [](bool on, CDesignDrawing& drawing) { SetAllDisplayed(on, &drawing); },
     [](const CDesignColours& colours) { return colours.Values().allVisible; }, ""},
    {"SetAllTrueWidth", Text::MenuAllTrueWidth, [](bool on, CDesignDrawing& drawing) { SetAllTrueWidth(on, &drawing); },
     [](const CDesignColours& colours) { return colours.Values().allTrueWidth; }, ""},
    {"ToggleGridsVisible", Text::MenuGridVisible,
     [](bool, CDesignDrawing& drawing) { ToggleGridsVisible(drawing.GetDocument()); },
     [](const CDesignColours& colours) { return colours.GetVisible(CDesignColours::kGridItem); }, "Ctrl+G"},
    {"ChangeCursor", Text::MenuNextCursor, [](bool, CDesignDrawing&) { ChangeCursor(); }, nullptr, ""},
};
}  // namespace

QString SettingsCommandText(std::string_view command) {
  for (const SDialogCommand& one : kDialogCommands)
    if (one.name == command) return PlainText(QtText(one.text));
  for (const SViewCommand& one : kViewCommands)
    if (one.name == command) return PlainText(QtText(one.text));
  return command == "ChooseGrid" ? PlainText(QtText(Text::MenuWorkingGrid)) : QtText(Text::Change);
}

CSettingsMenu::CSettingsMenu(QWidget* parent) : QMenu(QtText(Text::MenuSettings), parent) {
  for (const SDialogCommand& command : kDialogCommands) {
    QAction* const action = addAction(QtText(command.text), this, [this, &command] {
      command.run(m_document->Design());
      onDone();
    });
    action->setObjectName(command.name);
    action->setShortcut(QKeySequence(command.shortcut));
    if (command.run == ChangeSizes) addSeparator();
  }
  addSeparator();
  for (const SViewCommand& command : kViewCommands) {
    QAction* const action = addAction(QtText(command.text));
    action->setObjectName(command.name);
    action->setShortcut(QKeySequence(command.shortcut));
    action->setCheckable(command.isOn != nullptr);
    connect(action, &QAction::triggered, this, [this, &command](bool on) {
      command.run(on, *m_document->Drawing());
      onDone();
    });
  }
  m_grids = addMenu(QtText(Text::MenuWorkingGrid));
  m_grids->menuAction()->setObjectName("ChooseGrid");
  connect(m_grids, &QMenu::aboutToShow, this, &CSettingsMenu::FillGrids);
  Show(nullptr);
}

void CSettingsMenu::Show(CDocument* document) {
  m_document = document;
  Refresh();
}

void CSettingsMenu::Refresh() {
  CDesign* const design = m_document ? m_document->Design() : nullptr;
  const CDesignDrawing* const drawing = m_document ? m_document->Drawing() : nullptr;
  const bool isSchematic = design && design->IsKindOf(CScmDesign::GetThisClass());
  for (const SDialogCommand& command : kDialogCommands) {
    QAction* const action = findChild<QAction*>(command.name);
    action->setEnabled(design && IsOffered(command, design));
    action->setVisible(IsOffered(command, design));
    action->setText(QtText(isSchematic && command.inSchematics ? command.inSchematics : command.text));
  }
  for (const SViewCommand& command : kViewCommands) {
    QAction* const action = findChild<QAction*>(command.name);
    action->setEnabled(drawing != nullptr);
    if (command.isOn) action->setChecked(drawing && command.isOn(design->Colours()));
  }
  m_grids->menuAction()->setEnabled(drawing && design->grids.Count() > 0);
}

void CSettingsMenu::FillGrids() {
  m_grids->clear();
  CDesign* const design = m_document->Design();
  auto* const choice = new QActionGroup(m_grids);
  int index = 0;
  for (CGrid& grid : design->grids) {
    const QString name = grid.RecordName().empty() ? QtText(Text::NoName) : ToQt(grid.RecordName()).replace("&", "&&");
    QAction* const action = m_grids->addAction(name, this, [this, index] {
      ChooseGrid(index, m_document->Drawing());
      onDone();
    });
    action->setCheckable(true);
    action->setChecked(&grid == design->GetWorkingGrid());
    choice->addAction(action);
    ++index;
  }
}
