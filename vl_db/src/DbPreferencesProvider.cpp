#include <vl_db/DbPreferencesProvider.h>

namespace vl_db {

namespace {
DbPreferencesProvider* g_preferences = nullptr;
}

DbPreferencesProvider::~DbPreferencesProvider() = default;

DbPreferencesProvider* DbPreferencesProvider::instance() {
    return g_preferences;
}

void DbPreferencesProvider::setInstance(DbPreferencesProvider* provider) {
    g_preferences = provider;
}

}  // namespace vl_db
