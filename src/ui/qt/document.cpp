#include "ui/qt/document.h"

#include <QDir>
#include <QFileInfo>

#include "ui/qt/text.h"

CDocument::CDocument(std::unique_ptr<CTechnology> technology, const CString& path, std::optional<SFileState> state,
                     const QString& name)
    : m_technology(std::move(technology)),
      m_drawing(DynamicDowncast<CDesign>(static_cast<CObject*>(m_technology.get()))),
      m_path(path),
      m_state(state),
      m_name(name) {}

CDesignDrawing* CDocument::Drawing() {
  return Design() && !Design()->IsKindOf(CProject::GetThisClass()) ? &m_drawing : nullptr;
}

QString CDocument::Name() const { return QFileInfo(m_path.empty() ? m_name : ToQt(m_path)).fileName(); }

CString CDocument::ProposedPath() const { return m_path.empty() ? FromQt(m_name) + "." + Extension() : m_path; }

CResult<bool> CDocument::HasChangedOnDisk(const SDesktopFiles& files, const CString& path) const {
  const CResult<std::optional<SFileState>> now = files.look(path);
  if (!now) return SFailure{now.Error()};
  return HoldsOthersChanges(*now, IsSameFile(path, m_path) ? m_state : std::nullopt);
}

CResult<void> CDocument::Write(const SDesktopFiles& files, const CString& path) {
  const CResult<SFileState> written = files.write(path, *m_technology);
  if (!written) return SFailure{written.Error()};
  m_path = path;
  m_state = *written;
  m_technology->Journal().MarkSaved();
  return {};
}

QString KindText(std::string_view className) {
  struct SKindText {
    std::string_view className;
    CTextId text;
  };
  static constexpr SKindText kTextsOfKinds[] = {{"CPcbDesign", Text::MenuPcbDesign},
                                                {"CScmDesign", Text::MenuSchematicDesign},
                                                {"CPcbSymDesign", Text::MenuFootprint},
                                                {"CScmSymDesign", Text::MenuSchematicSymbol},
                                                {"CProject", Text::MenuProject},
                                                {"CPcbSymbolLibrary", Text::MenuFootprintLibrary},
                                                {"CScmSymbolLibrary", Text::MenuSymbolLibrary}};
  for (const SKindText& kind : kTextsOfKinds)
    if (kind.className == className) return QtText(kind.text);
  return ToQt(className);
}

bool IsSameFile(const CString& a, const CString& b) {
  const auto place = [](const CString& path) {
    const QFileInfo file(ToQt(path));
    return file.exists() ? file.canonicalFilePath() : QDir::cleanPath(file.absoluteFilePath());
  };
  return !a.empty() && !b.empty() && place(a) == place(b);
}
