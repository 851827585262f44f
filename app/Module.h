#pragma once
// Start-up and shut-down of the module, called by the host through the module's initialiser.
namespace ca {
class CaApp;
}

namespace vl_app {

class VantlibAppModule;
class FileFinder;
class DbPreferencesProvider;
class VantlibTranslations;

// Loads the drawing-side library manager, registers the embedded layouts and pictures, the
// application reactor, the module's services and its studio commands. Does nothing when the
// module is initialised already.
void initModule(ca::CaApp* app);
// Withdraws and deletes what initModule installed, in reverse order. Does nothing when the
// module is not initialised.
void uninitModule(ca::CaApp* app);

// The installed objects; null while the module is not initialised.
VantlibAppModule* appModule();
FileFinder* fileFinder();
DbPreferencesProvider* preferencesProvider();
VantlibTranslations* translations();

}  // namespace vl_app
