// techsheet-examples FOLDER: writes the example designs.
#include <cstdio>

#include "exampledesigns.h"
#include "model/services/apperror.h"
#include "storage/designfile.h"

int main(int count, char** arguments) {
  if (count != 2) {
    std::fprintf(stderr, "Usage: techsheet-examples FOLDER\n");
    return 1;
  }
  for (const SExampleDesign& example : ExampleDesigns()) {
    if (WriteDesignFile(CString(arguments[1]) + "/" + example.file, *example.make())) continue;
    std::fprintf(stderr, "%s\n", CAppError::GetLastErrorString().c_str());
    return 4;
  }
  return 0;
}
