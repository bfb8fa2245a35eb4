// Messages and questions.
#pragma once
#include <QWidget>

#include "model/services/userinterface.h"

/// Shows the message until it is answered. Escape, and the window's close, mean what does least: No, Cancel, or OK
/// where there is nothing else; No is the default of every Yes and No.
EAnswer AskPerson(const SMessage& message, QWidget* parent);
