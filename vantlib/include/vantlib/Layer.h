#pragma once
// Layer is declared with the other name-only objects.
#include <vantlib/Tag.h>
