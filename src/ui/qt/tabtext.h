// Cells as tab-separated text, the way spreadsheets put them on the clipboard: a line for each row; a cell with a tab,
// a line break or a quotation mark stands in quotation marks, which are doubled inside.
#pragma once
#include <QStringList>
#include <vector>

using CTabLines = std::vector<QStringList>;

QString ToTabText(const CTabLines& lines);
/// Any text reads as some cells; an empty one, and one that is a line break alone, as one empty cell. Lines may end in
/// "\n" or "\r\n", the last one may lack its end, and each has the cells that it has.
CTabLines FromTabText(const QString& text);
