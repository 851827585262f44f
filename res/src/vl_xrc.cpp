// Compiles the wxrc output: the embedded files and InitVantlibXmlResource().
#include "vl_resources.h"

#include "vl_xrc.inl"
