#pragma once
// Everything of the library data module.
#include <vantlib/Composition.h>
#include <vantlib/Criteria.h>
#include <vantlib/CustomProperty.h>
#include <vantlib/Exception.h>
#include <vantlib/IdMapping.h>
#include <vantlib/Integrity.h>
#include <vantlib/Library.h>
#include <vantlib/LibraryManager.h>
#include <vantlib/Material.h>
#include <vantlib/Profile.h>
#include <vantlib/Reactor.h>
#include <vantlib/Tag.h>
#include <vantlib/Transaction.h>
#include <vantlib/Translations.h>
