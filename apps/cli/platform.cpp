#include "cli/platform.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "shared/adapters.h"
#include "storage/designfile.h"

void InstallPlatform(const CString& settingsFolder) {
  InstallAdapters(settingsFolder, [](const CString& trouble) { std::fprintf(stderr, "%s\n", trouble.c_str()); });
}

int Fail(int exitStatus, const CString& reason) {
  std::fprintf(stderr, "%s\n", reason.c_str());
  return exitStatus;
}

int Print(std::string_view text) {
  errno = 0;
  if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0) return EExit::Ok;
  if (errno == EPIPE) return EExit::NotWritable;  // a reader that has seen enough needs no explanation
  return Fail(EExit::NotWritable,
              "Standard output cannot be written: " + std::error_code(errno, std::generic_category()).message() + ".");
}

std::unique_ptr<CTechnology> OpenTechnology(const CString& path) {
  CResult<std::unique_ptr<CTechnology>> technology = ReadDesignFile(path);
  if (technology) return std::move(*technology);
  Fail(EExit::InvalidInput, technology.Error());
  return nullptr;
}
