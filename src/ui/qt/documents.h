// The open designs, each in a tab, and what a person does with their files.
#pragma once
#include <QTabWidget>

#include "ui/qt/documentview.h"

class CDocuments : public QTabWidget {
  Q_OBJECT

 public:
  CDocuments(SDesktopFiles files, QWidget* parent);

  CDocumentView* Current() const;
  std::vector<CDocumentView*> Views() const;
  /// The tab of a design; null when it is in none.
  CDocumentView* ViewOf(const CObject& design) const;

  void New(std::string_view className);
  /// Opens a design, or imports a board; one that is open already comes to the front. A project brings its designs, and
  /// a design joins the open project that lists it. What cannot be opened is told.
  void Open(const CString& path);
  void ChooseAndOpen();
  void ChooseAndImport();
  /// False when nothing was written.
  bool Save(CDocumentView& view);
  bool SaveAs(CDocumentView& view);
  /// Asks what becomes of unsaved changes. False when the tab stays.
  bool Close(CDocumentView& view);
  /// Asks the same of every design and closes none. False when one of them is to stay.
  bool MayCloseAll();
  /// The titles of the tabs as the designs are now.
  void RefreshTitles();

 signals:
  void CurrentChanged();
  /// A design was read from this file, or written to it.
  void FileUsed(const CString& path);
  void Saved(const CString& path);

 private:
  CDocumentView& Add(std::unique_ptr<CDocument> document);
  /// Opens the designs of a project that are not open yet. What cannot be opened is told once.
  void OpenDesignsOf(CDocumentView& view);
  /// Makes a design a part of the open project that lists its file.
  void JoinProject(CDocument& document);
  void Import(const CString& path);
  bool MayClose(CDocumentView& view);
  CDocumentView* ViewOfFile(const CString& path) const;
  /// What becomes of a save. Done with the view means that it is not to be touched: it may have been reloaded.
  enum class ESave { Go, OtherName, Done };
  /// Whether the file of the design may be written. When another program has changed it, a person decides.
  ESave MayWrite(CDocumentView& view, const CString& path);
  /// Go when it was written; what cannot be is told, with the offer of another name.
  ESave Write(CDocumentView& view, const CString& path);
  /// Reads the file of the design anew, into the same tab. When it cannot be read, that is told and nothing has
  /// changed.
  void Reload(CDocumentView& view);

  SDesktopFiles m_files;
  int m_untitled = 0;  // how many designs were made new
};
