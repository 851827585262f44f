#pragma once
// MaterialType is declared with the other name-only objects.
#include <vantlib/Tag.h>
