#pragma once
// References kept in link tables: the tags and custom values of annotated objects and the
// plies of compositions.
#include "Kinds.h"

namespace vantlib {

extern const LinkRows kTagRows;          // lib_object_tag
extern const LinkRows kCustomValueRows;  // lib_custom_value
extern const LinkRows kPlyRows;          // lib_ply

}  // namespace vantlib
