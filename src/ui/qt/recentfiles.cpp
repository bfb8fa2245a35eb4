#include "ui/qt/recentfiles.h"

#include <QFileInfo>
#include <QInputDialog>
#include <algorithm>

#include "commands/commands.h"
#include "model/services/registry.h"
#include "ui/qt/commandtext.h"

namespace {
constexpr int kLongest = 50;  // what a menu can show
constexpr int kWithDigit = 9;

CString ValueName(std::size_t index) { return "File" + IntText(static_cast<std::int64_t>(index + 1)); }
CAppRegistry Store() { return CAppRegistry("Desktop\\Recent"); }

/// A stored length of any value is as good as the nearest one that can be shown.
std::size_t Length() { return static_cast<std::size_t>(std::clamp(GetMaxMRUCount(), 0, kLongest)); }

void Keep(const CStringArray& files) {
  CAppRegistry store = Store();
  CString old;
  for (std::size_t i = 0; i < kLongest; ++i) {
    if (i < files.size()) {
      if (!store.GetValue(ValueName(i), old) || old != files[i]) store.SetValue(ValueName(i), files[i]);
    } else if (store.GetValue(ValueName(i), old)) {
      store.DeleteValue(ValueName(i));
    }
  }
}
}  // namespace

CRecentFilesMenu::CRecentFilesMenu(QWidget* parent) : QMenu(QtText(Text::MenuOpenRecent), parent) {
  connect(this, &QMenu::aboutToShow, this, &CRecentFilesMenu::Fill);
}

CStringArray CRecentFilesMenu::Files() {
  CStringArray files;
  CString path;
  for (std::size_t i = 0; i < Length() && Store().GetValue(ValueName(i), path); ++i) files.push_back(path);
  return files;
}

void CRecentFilesMenu::Note(const CString& path) {
  CStringArray files = Files();
  std::erase(files, path);
  files.insert(files.begin(), path);
  files.resize(std::min(files.size(), Length()));
  Keep(files);
}

void CRecentFilesMenu::Fill() {
  clear();
  int number = 0;
  for (const CString& path : Files()) {
    const QString digit = ++number <= kWithDigit ? QString("&%1  ").arg(number) : QString();
    QAction* const action =
        addAction(digit + QFileInfo(ToQt(path)).fileName().replace("&", "&&"), this, [this, path] { onOpen(path); });
    action->setToolTip(ToolTip(ToQt(path)));
    action->setStatusTip(ToQt(path));
  }
  addSeparator();
  addAction(QtText(Text::MenuClearList), this, [] { Keep({}); })->setEnabled(number > 0);
  addAction(QtText(Text::MenuListLength), this, &CRecentFilesMenu::AskForLength);
}

void CRecentFilesMenu::AskForLength() {
  bool answered = false;
  const int length =
      QInputDialog::getInt(parentWidget(), PlainText(QtText(Text::MenuListLength)), QtText(Text::RecentFilesLength),
                           static_cast<int>(Length()), 0, kLongest, 1, &answered);
  if (!answered) return;
  SetMaxMRUCount(length);
  Keep(Files());
}
