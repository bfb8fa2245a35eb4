#include "ui/qt/layoutstore.h"

#include "model/services/registry.h"
#include "ui/qt/text.h"

namespace {
constexpr const char* kKey = "Desktop";
}

QByteArray ReadLayout(const char* name) {
  CString text;
  CAppRegistry(kKey).GetValue(name, text);
  return QByteArray::fromBase64(ToQt(text).toLatin1());
}

void KeepLayout(const char* name, const QByteArray& state) {
  CAppRegistry(kKey).SetValue(name, state.toBase64().toStdString());
}
