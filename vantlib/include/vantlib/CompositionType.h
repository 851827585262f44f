#pragma once
// CompositionType is declared with the other name-only objects.
#include <vantlib/Tag.h>
