// The menu of the settings commands: those that work for the kind of the design.
#pragma once
#include <QMenu>
#include <functional>
#include <string_view>

class CDesignDrawing;
class CDocument;
class CTechnology;

/// What a command is called that makes changes outside every undo level; a general word for one that is not known.
QString SettingsCommandText(std::string_view command);

class CSettingsMenu : public QMenu {
  Q_OBJECT

 public:
  explicit CSettingsMenu(QWidget* parent);

  /// Serves this design; null for none.
  void Show(CDocument* document);
  /// Called after a command.
  std::function<void()> onDone;

 private:
  void Refresh();
  void FillGrids();

  CDocument* m_document = nullptr;
  QMenu* m_grids;
};
