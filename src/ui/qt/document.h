// An open design with its file.
//
// A document knows what its file held when the two were last the same, so that nobody's changes to the file are
// overwritten unasked.
#pragma once
#include <QString>

#include "model/design/drawing.h"
#include "ui/qt/desktopfiles.h"

class CDocument {
 public:
  /// `path` is empty for a design that has no file yet; `name` is what it is called until then.
  CDocument(std::unique_ptr<CTechnology> technology, const CString& path, std::optional<SFileState> state,
            const QString& name);

  CTechnology& Technology() { return *m_technology; }
  /// The design, null for a library.
  CDesign* Design() const { return m_drawing.GetDocument(); }
  /// What is drawn; null for libraries and projects, which have nothing to draw.
  CDesignDrawing* Drawing();

  const CString& Path() const { return m_path; }
  /// The name of the file, or what the design is called without one.
  QString Name() const;
  /// Where a file chooser starts: the file, or a proposal with the extension of the kind of design.
  CString ProposedPath() const;
  CString Extension() const { return CDesign::GetFileExtension(m_technology->GetRuntimeClass()); }
  bool IsModified() const { return m_technology->Journal().IsModified(); }
  /// Whether anything would be lost without a save, also what does not make the design a modified one.
  bool DiffersFromFile() const { return m_technology->Journal().DiffersFromSave(); }

  /// Whether the file `path` holds something else than this design was read from or last written to. One that is not
  /// there does not: nothing can be lost.
  CResult<bool> HasChangedOnDisk(const SDesktopFiles& files, const CString& path) const;
  /// Writes the design, which has that file from then on. After a failure it is as it was.
  CResult<void> Write(const SDesktopFiles& files, const CString& path);

 private:
  std::unique_ptr<CTechnology> m_technology;
  CDesignDrawing m_drawing;
  CString m_path;
  std::optional<SFileState> m_state;
  QString m_name;
};

/// The text for a kind of design, such as "PCB design"; `className` as MakeTechnology knows it.
QString KindText(std::string_view className);

/// Whether two paths lead to one file.
bool IsSameFile(const CString& a, const CString& b);
