#pragma once
#include "model/base/textfault.h"
