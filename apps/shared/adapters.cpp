#include "shared/adapters.h"

#include "model/services/apperror.h"
#include "model/services/files.h"
#include "settings/settingsstore.h"
#include "shared/console.h"
#include "storage/checkedwriter.h"
#include "storage/designfile.h"

void InstallAdapters(const CString& settingsFolder, std::function<void(const CString& text)> trouble) {
  CAppError::InstallLog(TellOnStandardError);
  InstallFileAccess();
  InstallFiles({ReadFileLimited, WriteFileChecked});
  const CString folder = settingsFolder.empty() ? SettingsFolder() : settingsFolder;
  InstallSettingsStore(std::make_unique<CFileSettingsStore>(folder, std::move(trouble)));
}
