// Designs: a technology with the items that use it, and the values of the whole design.
#pragma once
#include "model/base/result.h"
#include "model/design/items.h"
#include "model/design/selection.h"
#include "model/design/technology.h"

class CProject;

/// Visibility and colours of the kinds of items. Visibility is a matter of view: a step only while a level is open.
struct SDesignColoursFields {
  CItemFlags visible = CItemFlags().set();
  bool allVisible = false;
  bool allTrueWidth = false;
  CColour background{0x000000};
};
class CDesignColours : public CRecord<SDesignColoursFields> {
  TECHSHEET_RECORD(CDesignColours, CRecordBase)
  /// The items of the set: what can be hidden whatever the layer it stands on.
  enum EItem : int {
    kPadItem,
    kViaItem,
    kTrackItem,
    kConnectionItem,
    kAreaItem,
    kCopperItem,
    kShapeItem,
    kTextItem,
    kValueItem,
    kBoardItem,
    kGridItem = 65
  };
  /// Items outside the set are never visible, and setting them changes nothing.
  bool GetVisible(int item) const;
  void SetVisible(int item, bool visible);
  void SetAllVisible(bool all) { SetView(&Fields::allVisible, all); }
  void SetAllTrueWidth(bool all) { SetView(&Fields::allTrueWidth, all); }
};

struct SDesignValuesFields {
  CString name;
  CString styleSheet;  // path of the linked technology file, or empty
  CString barringChar{"~"};
  CString font{"Standard"};
  bool keepStyleSizes = false;
  bool valueDisplayed = true;
  CPoint coordOrigin;
  CPoint areaFrom;  // the design area
  CPoint areaTo;
  CString revision;
  CString title;
};
/// The values that belong to the whole design.
class CDesignValues : public CRecord<SDesignValuesFields> {
  TECHSHEET_RECORD(CDesignValues, CRecordBase)
};

class CDesign : public CTechnology {
  TECHSHEET_CLASS(CDesign, CTechnology)
  ~CDesign() override;

#define TECHSHEET_ITEM(Kind, Class, member) \
  CCollection<Class> member{#member};       \
  TECHSHEET_WALK(Kind, Class, member)
#include "model/design/items.def"
#undef TECHSHEET_ITEM
  /// The pads of all symbols, and the symbols of all placed components.
  CPad* FirstPad(POSITION& position) const { return FirstOwned(position, symbols, &CSymbol::Pads); }
  CPad* NextPad(POSITION& position) const { return NextOwned<CPad>(position); }
  CSymbolInstance* FirstSymbolInstance(POSITION& position) const {
    return FirstOwned(position, componentInstances, &CComponentInstance::SymbolInstances);
  }
  CSymbolInstance* NextSymbolInstance(POSITION& position) const { return NextOwned<CSymbolInstance>(position); }
  CComponentInstance* FindComponentInstance(std::string_view name) const { return componentInstances.Find(name); }
  CComponent* FindComponent(std::string_view name) const { return components.Find(name); }
  CSymbol* FindSymbol(std::string_view name) const { return symbols.Find(name); }

  CString GetObjectName() const override { return GetName(); }
  const CDesignValues& DesignValues() const { return m_values; }
  CDesignValues& DesignValues() { return m_values; }
  const CString& GetName() const { return m_values.Values().name; }
  void SetName(const CString& name) { m_values.Set(&SDesignValuesFields::name, name); }
  const CString& GetFont() const { return m_values.Values().font; }
  const CString& GetBarChar() const { return m_values.Values().barringChar; }
  void SetBarringChar(const CString& character) { m_values.Set(&SDesignValuesFields::barringChar, character); }
  bool GetKeepStyleSizes() const { return m_values.Values().keepStyleSizes; }
  void SetKeepStyleSizes(bool keep) { m_values.Set(&SDesignValuesFields::keepStyleSizes, keep); }
  bool GetValueDisplayed() const { return m_values.Values().valueDisplayed; }
  void SetValueDisplayed(bool displayed) { m_values.Set(&SDesignValuesFields::valueDisplayed, displayed); }
  const CString& GetStyleSheet() const { return m_values.Values().styleSheet; }
  void SetStyleSheet(const CString& path) { m_values.Set(&SDesignValuesFields::styleSheet, path); }
  void SetCoordOrigin(CPoint origin) { m_values.Set(&SDesignValuesFields::coordOrigin, origin); }
  void SetDesignArea(CPoint from, CPoint to);
  /// The rectangle around everything, empty for an empty design.
  CBox GetExtents() const;
  /// Moves everything; false, and nothing moved, when a place would leave the range of design units.
  bool Shift(int dx, int dy);

  CDesignColours& Colours() { return m_colours; }
  const CDesignColours& Colours() const { return m_colours; }
  CSelectionOverview& Selection() { return m_selection; }
  const CSelectionOverview& Selection() const { return m_selection; }

  /// The project that the design belongs to, or null.
  CProject* GetProject() const { return m_project; }

  // ---- Grids
  /// Makes `grid` the working grid; false when it was that already.
  bool MakeCurrentGrid(CGrid* grid);
  CGrid* GetWorkingGrid() const;
  CGrid* GetScreenGrid() const;
  /// The ruler stops of the design, the first set of them; null when it has none.
  CRulerStop* GetDefaultRulerStopSet() const { return rulerStops.First(); }

  // ---- Undo levels (the forms with Nested nest; the plain ones work on the innermost level)
  void StartNestedUndoLevel(unsigned id) { Journal().Start(id); }
  void EndNestedUndoLevel(unsigned id) { Journal().End(id); }
  void UndoNestedLevel(unsigned id) { Journal().Revert(id); }
  bool InUndoLevel() const { return Journal().InLevel(); }
  void StartUndoLevel(unsigned id) { Journal().Start(id); }
  void EndUndoLevel();
  void UndoCurrentLevel();
  void ResetUndoLevels() { Journal().Reset(); }
  bool Undo() { return Journal().Undo(); }
  bool Redo() { return Journal().Redo(); }
  /// Zero-terminated list of identifiers whose steps do not mark a design as changed.
  static void SetIgnoreUndo(const unsigned* ids) { CUndoJournal::SetIgnored(ids); }
  /// Whether the design differs from its last save by a step that counts.
  bool GetChanged() const { return Journal().IsModified(); }

  /// The extension of technology files for a kind of design, without the dot. Libraries use those of the footprints or
  /// symbols that they hold.
  static CString GetTechnologyFileExtension(const CRuntimeClass* kind);
  /// The extension of designs of that kind.
  static CString GetFileExtension(const CRuntimeClass* kind);
  /// "name" made local to a design: the part behind the last "/".
  static CString MakeNetLocalName(const CString& name);

  /// Reads a design of any kind; null, with the reason as the last error, when that fails. The reader is installed by
  /// the program (SetFileAccess).
  static CDesign* ReadDesign(const CString& path);
  static bool SaveDesign(const CString& path, CDesign* design);
  static void DestroyDesign(CDesign* design);
  struct SFileAccess {
    std::function<CDesign*(const CString& path)> read;                      // null: failed, last error set
    std::function<bool(const CString& path, const CDesign& design)> write;  // false: failed, last error set
  };
  static void SetFileAccess(SFileAccess access);

  // ---- Application-wide values
  static int GetDocNameFirst();
  static void SetDocNameFirst(int value);
  static int GetCopyAssociatedFiles();
  static void SetCopyAssociatedFiles(int value);
  static bool GetOverwriteAssociatedFiles();
  static void SetOverwriteAssociatedFiles(bool value);
  static CString GetSecurityDir();
  static void SetSecurityDir(const CString& folder);
  static bool GetSecurityDirEnabled();
  static void SetSecurityDirEnabled(bool enabled);
  static int GetSecurityInterval();  // minutes
  static void SetSecurityInterval(int minutes);
  static int GetSecurityWhere();
  static void SetSecurityWhere(int where);
  static int GetWorkTimeBeforeBackup();  // seconds
  static void SetWorkTimeBeforeBackup(int seconds);
  static int GetWorkTimeBeforeIdle();  // seconds
  static void SetWorkTimeBeforeIdle(int seconds);

 protected:
  CDesign();

 private:
  friend class CProject;
  void SelectedItemLeaves(CDesignItem& item) override;
  CDesignValues m_values;
  CDesignColours m_colours;
  CSelectionOverview m_selection{*this};
  CProject* m_project = nullptr;
};

/// What a new design starts with.
enum class EContent { Empty, DefaultTechnology };

class CPcbDesign : public CDesign {
  TECHSHEET_CLASS(CPcbDesign, CDesign)
  explicit CPcbDesign(EContent content = EContent::DefaultTechnology);
  bool NeedsBuiltInLayer() const override { return true; }
};
class CScmDesign : public CDesign {
  TECHSHEET_CLASS(CScmDesign, CDesign)
  explicit CScmDesign(EContent content = EContent::DefaultTechnology);
};
class CPcbSymDesign : public CDesign {
  TECHSHEET_CLASS(CPcbSymDesign, CDesign)
  explicit CPcbSymDesign(EContent content = EContent::DefaultTechnology);
  bool NeedsBuiltInLayer() const override { return true; }
};
class CScmSymDesign : public CDesign {
  TECHSHEET_CLASS(CScmSymDesign, CDesign)
  explicit CScmSymDesign(EContent content = EContent::DefaultTechnology);
};

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

/// A library of symbols with a technology of its own.
class CSymbolLibrary : public CTechnology {
  TECHSHEET_CLASS(CSymbolLibrary, CTechnology)
  ~CSymbolLibrary() override;
  CString GetObjectName() const override { return m_values.Values().name; }
  CCollection<CSymbol> symbols{"symbols"};
  const CString& GetStyleSheet() const { return m_values.Values().styleSheet; }
  void SetStyleSheet(const CString& path) { m_values.Set(&SDesignValuesFields::styleSheet, path); }
  const CString& GetName() const { return m_values.Values().name; }
  void SetName(const CString& name) { m_values.Set(&SDesignValuesFields::name, name); }

 protected:
  CSymbolLibrary();

 private:
  CDesignValues m_values;
};
class CPcbSymbolLibrary : public CSymbolLibrary {
  TECHSHEET_CLASS(CPcbSymbolLibrary, CSymbolLibrary)
  explicit CPcbSymbolLibrary(EContent content = EContent::DefaultTechnology);
  bool NeedsBuiltInLayer() const override { return true; }
};
class CScmSymbolLibrary : public CSymbolLibrary {
  TECHSHEET_CLASS(CScmSymbolLibrary, CSymbolLibrary)
  explicit CScmSymbolLibrary(EContent content = EContent::DefaultTechnology);
};

/// A new design or library by the name of its class ("CPcbDesign"); null for a name that is none.
std::unique_ptr<CTechnology> MakeTechnology(std::string_view className, EContent content);
/// The names of all kinds that MakeTechnology knows.
CStringArray TechnologyClassNames();

/// Deletes a layer; false, and nothing changed, while something refers to it.
bool DeleteLayer(CDesign* design, CLayer* layer);

/// Names the changes that a command makes outside every undo level, and ends the step they belong to when the command
/// begins and when it returns.
class CCommandScope {
 public:
  CCommandScope(CTechnology* design, const char* command);
  ~CCommandScope();
  CCommandScope(const CCommandScope&) = delete;
  CCommandScope& operator=(const CCommandScope&) = delete;

 private:
  CTechnology* m_design;
  CString m_outer;  // the command that called this one
};
