// The menu of the files that were used last, kept with the user's settings. Its length is GetMaxMRUCount().
#pragma once
#include <QMenu>
#include <functional>

#include "model/base/text.h"

class CRecentFilesMenu : public QMenu {
  Q_OBJECT

 public:
  explicit CRecentFilesMenu(QWidget* parent);
  /// Puts the file first.
  void Note(const CString& path);
  /// Opens a file of the list.
  std::function<void(const CString& path)> onOpen;

  /// The files, the latest first.
  static CStringArray Files();

 private:
  void Fill();
  void AskForLength();
};
