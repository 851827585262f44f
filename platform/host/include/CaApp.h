#pragma once
// The host application object: module loading with start-up and shut-down functions, application
// reactors, the active drawing, and the commands that modules offer to the user.
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <wx/string.h>

#include "ModuleInterface.h"
#include "OdArray.h"
#include "OdString.h"

class OdDbDatabase;

namespace ca {

class CaApp;

// Which events an application reactor receives; the values combine as bits.
enum EEventScope : unsigned {
    kApplicationEvents = 1,  // transmittals, quitting
    kDocumentEvents = 2,     // document activation and deactivation
    kAllEvents = kApplicationEvents | kDocumentEvents,
};

struct TransmittalGraphNode {
    // Kinds of files that travel with a drawing in a transmittal package.
    enum EFileType {
        kUnknownFile = 0,
        kDrawingFile = 1,
        kExternalReference = 2,
        kRasterImage = 3,
        kFontFile = 4,
        kPlotStyleTable = 5,
        kLibraryFile = 14,
    };
};

using TransmittalFiles = OdArray<std::pair<OdString, TransmittalGraphNode::EFileType>>;

// Receiver of application events; every operation does nothing unless overridden.
class CAppReactor {
public:
    virtual ~CAppReactor() = default;
    virtual void onActivate(OdDbDatabase*) {}
    virtual void onDeactivate(OdDbDatabase*) {}
    virtual void onDatabaseAddedToEtransmit(const OdDbDatabase*, TransmittalFiles&) {}
    virtual void onBeginQuit() {}
};

// A module declares one static CAppInitializer; the host runs `init` once after loading the
// module and `uninit` when it shuts the module down.
class CAppInitializer {
public:
    using Function = std::function<void(CaApp*)>;
    CAppInitializer(Function init, Function uninit);
    ~CAppInitializer();
    CAppInitializer(const CAppInitializer&) = delete;
    CAppInitializer& operator=(const CAppInitializer&) = delete;

private:
    friend class CaApp;
    Function m_init;
    Function m_uninit;
};

struct Command {
    wxString name;       // short name, typed on the command line and passed to --command
    wxString menuLabel;  // label in the studio's Library menu
    std::function<void()> action;
};

class CaApp {
public:
    CaApp();
    virtual ~CaApp();
    CaApp(const CaApp&) = delete;
    CaApp& operator=(const CaApp&) = delete;

    static CaApp* instance();

    // Modules: "<moduleDir>/<name>.so". The default folder is "modules" next to the executable,
    // or $VL_MODULE_DIR.
    void setModuleDir(const wxString& dir);
    wxString moduleDir() const;
    // Loads a module once and runs the start-up functions it registered. A module that is already
    // loaded returns true at once; a missing or broken one, or one that does not export this
    // host's interface version (ModuleInterface.h), is reported (when `reportErrors`), left
    // without its start-up and returns false.
    bool loadDrx(const wxString& name, bool reportErrors = true);
    bool isDrxLoaded(const wxString& name) const;
    // Runs start-up functions registered by code that was not loaded through loadDrx (modules
    // linked into the executable).
    void runPendingInitializers();
    // Runs every shut-down function, in reverse order of start-up.
    void uninitAll();

    // Registers once; a second call for the same reactor only widens its scope.
    void addAppReactor(CAppReactor* reactor, unsigned scope = kAllEvents);
    void removeAppReactor(CAppReactor* reactor);
    bool hasAppReactor(const CAppReactor* reactor) const;

    // The active drawing (not owned). Switching fires onDeactivate and onActivate.
    void setActiveDatabase(OdDbDatabase* db);
    OdDbDatabase* activeDatabase() const { return m_activeDb; }
    TransmittalFiles collectTransmittalFiles(const OdDbDatabase* db);
    void fireBeginQuit();

    // Text that describes the project and central libraries of a drawing, provided by the
    // drawing-side library module.
    void setLibraryInfoProvider(std::function<wxString(OdDbDatabase*)> provider);
    bool hasLibraryInfoProvider() const { return static_cast<bool>(m_libraryInfo); }
    wxString libraryInfo(OdDbDatabase* db) const;

    // Services the host offers to modules by name (not owned; null removes one). A module asks
    // for the interface it knows under that name, e.g. "ProfilesInfo".
    void setService(const std::string& name, void* service);
    void* service(const std::string& name) const;

    // Commands. Names are matched without regard to case; adding a name that exists replaces
    // that command. A name with blanks or an empty action throws std::invalid_argument. Commands
    // with a menu label appear in the studio's Library menu.
    void addCommand(const wxString& name, const wxString& menuLabel, std::function<void()> action);
    bool removeCommand(const wxString& name);
    const std::vector<Command>& commands() const { return m_commands; }
    const Command* findCommand(const wxString& name) const;
    // Runs a command now; false (and a prompt message) when there is no such command. An
    // exception escaping the command is reported on the command line. Text after the first
    // blank ("profile-offset IPE 200") is the command's argument, which it reads through
    // commandArgument() while it runs.
    bool runCommand(const wxString& name);
    const wxString& commandArgument() const { return m_commandArgument; }
    // Executes text as if typed: one command per line or blank-separated word; a leading '_' or
    // '.' is ignored. Runs from the event loop when one is up.
    void executeCommandLine(const wxString& text);
    // Called whenever the command list changes (the studio rebuilds its menu).
    void setCommandsChangedHandler(std::function<void()> handler);

private:
    struct LoadedModule;
    struct ReactorEntry {
        CAppReactor* reactor;
        unsigned scope;
    };
    struct InitializedEntry {
        CAppInitializer* initializer;
        wxString module;
    };
    friend class CAppInitializer;
    void forgetInitializer(CAppInitializer* initializer);
    void runInitializers(const wxString& module);
    std::vector<CAppReactor*> reactorsFor(unsigned scope) const;
    void commandsChanged();

    static CaApp* s_instance;
    wxString m_moduleDir;
    std::vector<std::unique_ptr<LoadedModule>> m_modules;
    std::vector<InitializedEntry> m_initialized;
    std::vector<ReactorEntry> m_reactors;
    OdDbDatabase* m_activeDb = nullptr;
    std::function<wxString(OdDbDatabase*)> m_libraryInfo;
    std::vector<Command> m_commands;
    std::function<void()> m_commandsChanged;
    std::map<std::string, void*> m_services;
    wxString m_commandArgument;
};

// The active drawing of the application, null when none is open.
OdDbDatabase* curDb();
// The product name shown in titles of messages and questions.
wxString appName();
void setAppName(const wxString& name);

}  // namespace ca
