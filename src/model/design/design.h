// Designs: a technology with the items that use it, and the values of the whole design.
#pragma once
#include "model/design/colours.h"
#include "model/design/items.h"
#include "model/design/selection.h"
#include "model/design/technology.h"

class CProject;

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

/// What a new design starts with.
enum class EContent { Empty, DefaultTechnology };

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
  /// An identifier that is not that of the innermost level ends nothing, and is a mistake in the log.
  void EndNestedUndoLevel(unsigned id);
  void UndoNestedLevel(unsigned id);
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
  CString m_projectFile;  // the entry of the project's list that the design was read from
};

/// Deletes a layer; false, and nothing changed, while something refers to it.
bool DeleteLayer(CDesign* design, CLayer* layer);

/// An undo level that is open as long as this object lives, however its scope is left. Its changes are kept unless they
/// are reverted. Levels that were opened inside and left open end with it, which is a mistake in the log.
class CUndoLevel {
 public:
  CUndoLevel(CTechnology& design, unsigned id);
  ~CUndoLevel();
  CUndoLevel(const CUndoLevel&) = delete;
  CUndoLevel& operator=(const CUndoLevel&) = delete;
  /// Ends the level and takes back all that was changed in it.
  void Revert();

 private:
  bool EndInner();  // false when this level itself is closed
  CUndoJournal& m_journal;
  unsigned m_id;
  std::size_t m_outer;  // levels around it
};

/// Names the changes that a command makes outside every undo level, and ends the step they belong to when the command
/// begins and when it returns.
class CCommandScope {
 public:
  /// `command` is a literal.
  CCommandScope(CTechnology* design, const char* command);
  ~CCommandScope();
  CCommandScope(const CCommandScope&) = delete;
  CCommandScope& operator=(const CCommandScope&) = delete;

 private:
  CTechnology* m_design;
  std::string_view m_outer;  // the command that called this one
};

// The kinds of design derive from the above, and go with it.
#include "model/design/designkinds.h"
#include "model/design/project.h"
