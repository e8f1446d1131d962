// Text, numbers and geometry that every floor uses. Everything here is a pure function.
#pragma once

#include "core/Expressions.h"
#include "core/Geometry.h"
#include "core/Numbers.h"
#include "core/Text.h"
