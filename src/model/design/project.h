// Projects: designs that belong together.
//
// A project lists the files of its designs. Which of them are open is known to it, and nothing here opens another one:
// the walks see open designs alone, and FilesNotOpen names the others, which a change cannot reach.
#pragma once
#include "model/design/design.h"

/// A project has net classes and variants of its own. It does not own its designs; a design that is destroyed leaves
/// its project.
class CProject : public CDesign {
  TECHSHEET_CLASS(CProject, CDesign)
  explicit CProject(EContent content = EContent::DefaultTechnology);
  ~CProject() override;

  /// Takes an open design in, out of the project in which it was. `file` is the entry of designFiles that it was read
  /// from, empty for a design without one; a design that is here already keeps its entry when that is empty.
  void AddDesign(CDesign* design, const CString& file = {});
  void RemoveDesign(CDesign* design);
  const std::vector<CDesign*>& Designs() const { return m_designs; }
  /// The paths of the project's designs as its file holds them, beside the project file.
  CStringArray designFiles;
  /// The entries of designFiles whose designs are not open.
  CStringArray FilesNotOpen() const;

  /// The open schematics of the project but the one that asks.
  CDesign* FirstNetClassDesign(POSITION& position, const CDesign* asking) const;
  CDesign* NextNetClassDesign(POSITION& position, const CDesign* asking) const;
  /// The open designs of the project that hold a net of that name, but the one that asks.
  CDesign* FirstNetDesign(std::string_view net, POSITION& position, const CDesign* asking = nullptr) const;
  CDesign* NextNetDesign(std::string_view net, POSITION& position, const CDesign* asking = nullptr) const;

  static int GetAllSheets();
  static void SetAllSheets(int value);
  static int GetOpenAllSheets();
  static void SetOpenAllSheets(int value);
  static bool GetSyncSheets();
  static void SetSyncSheets(bool sync);

 private:
  template <class Test>
  CDesign* WalkDesigns(std::vector<CDesign*>::const_iterator from, POSITION& position, Test test) const;
  std::vector<CDesign*>::const_iterator PlaceOf(POSITION position) const;

  std::vector<CDesign*> m_designs;
};
