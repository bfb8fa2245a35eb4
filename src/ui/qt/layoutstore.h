// What the main window keeps of its layout, value by value. Damaged or missing ones read as nothing.
#pragma once
#include <QByteArray>

QByteArray ReadLayout(const char* name);
void KeepLayout(const char* name, const QByteArray& state);
