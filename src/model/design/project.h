// Projects.
#pragma once
#include "model/design/design.h"

/// A project: designs that belong together, with net classes and variants of its own. It does not own its designs; a
/// design that is destroyed leaves its project.
class CProject : public CDesign {
  TECHSHEET_CLASS(CProject, CDesign)
  explicit CProject(EContent content = EContent::DefaultTechnology);
  ~CProject() override;

  void AddDesign(CDesign* design);
  void RemoveDesign(CDesign* design);
  const std::vector<CDesign*>& Designs() const { return m_designs; }
  /// The paths of the project's designs as its file holds them, beside the project file.
  CStringArray designFiles;

  static int GetAllSheets();
  static void SetAllSheets(int value);
  static int GetOpenAllSheets();
  static void SetOpenAllSheets(int value);
  static bool GetSyncSheets();
  static void SetSyncSheets(bool sync);

 private:
  std::vector<CDesign*> m_designs;
};
