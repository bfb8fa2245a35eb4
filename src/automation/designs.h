// The designs that a script has open, each under the name that the script gave it.
#pragma once
#include <map>
#include <memory>

#include "model/design/design.h"
#include "model/services/files.h"

class CDesigns {
 public:
  /// The functions that return a text do nothing when it is not empty: it says why.

  /// Makes a design of that class with the default technology; with `project` not empty, in that project.
  CString New(const CString& name, const CString& className, const CString& project);
  /// Reads a design file. The designs of a project are opened too, under their file names without extension; a design
  /// that an open project lists joins it.
  CString Open(const CString& name, const CString& path);
  /// Writes a design; with `path` empty, where it came from. A project's file then lists its open designs that have
  /// a file too. A file that somebody else changed since it was read or written here is replaced only when told to
  /// `overwrite` it.
  CString Save(const CString& name, const CString& path, bool overwrite);
  CString Close(const CString& name);

  CTechnology* Find(const CString& name) const;
  /// The name under which an object is known: of a design that is open here the script's, otherwise its own.
  CString NameOf(const CObject& object) const;

 private:
  struct SOpen {
    std::unique_ptr<CTechnology> technology;
    CString path;  // empty until it has a file
  };
  void JoinDesigns(CProject& project, const CString& path) const;
  CString OthersChanges(const CString& path) const;
  void ListDesigns(CProject& project, const CString& path, const CString& oldPath) const;
  std::map<CString, SOpen> m_open;
  std::map<CString, SFileState> m_files;  // by where they are: as they were when last read or written
};

/// "There is no design ...", for all who look one up.
CString NoDesign(const CString& name);
