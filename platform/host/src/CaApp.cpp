#include "CaApp.h"

#include <dlfcn.h>

#include <algorithm>
#include <mutex>

#include <wx/app.h>
#include <wx/filename.h>
#include <wx/intl.h>
#include <wx/stdpaths.h>
#include <wx/tokenzr.h>
#include <wx/utils.h>

#include "OdStringWx.h"
#include "Prompt.h"

namespace ca {

namespace {

// Initialisers whose module was mapped but whose start-up function has not run yet. They
// register themselves while the module's static objects are built, before any CaApp may exist.
struct InitializerRegistry {
    std::mutex mutex;
    std::vector<CAppInitializer*> pending;
};

InitializerRegistry& registry() {
    static InitializerRegistry instance;
    return instance;
}

size_t pendingInitializerCount() {
    InitializerRegistry& reg = registry();
    std::lock_guard<std::mutex> lock(reg.mutex);
    return reg.pending.size();
}

// Forgets the initialisers registered from position `first` on: those of a module refused
// after mapping.
void dropInitializersFrom(size_t first) {
    InitializerRegistry& reg = registry();
    std::lock_guard<std::mutex> lock(reg.mutex);
    if (first < reg.pending.size())
        reg.pending.erase(reg.pending.begin() + static_cast<std::ptrdiff_t>(first), reg.pending.end());
}

// The interface version the module at `path` exports, or null when it exports none. dlsym also
// searches the module's dependencies, so the symbol must be the module's own.
const int* moduleInterfaceVersion(void* handle, const wxString& path) {
    dlerror();
    void* symbol = dlsym(handle, kModuleInterfaceSymbol);
    Dl_info info;
    if (!symbol || !dladdr(symbol, &info) || !info.dli_fname)
        return nullptr;
    if (!wxFileName(wxString::FromUTF8(info.dli_fname)).SameAs(wxFileName(path)))
        return nullptr;
    return static_cast<const int*>(symbol);
}

wxString& applicationName() {
    static wxString name = "Vantlib Studio";
    return name;
}

}  // namespace

struct CaApp::LoadedModule {
    wxString name;
    wxString path;
    void* handle = nullptr;
};

CaApp* CaApp::s_instance = nullptr;

CAppInitializer::CAppInitializer(Function init, Function uninit)
    : m_init(std::move(init)), m_uninit(std::move(uninit)) {
    InitializerRegistry& reg = registry();
    std::lock_guard<std::mutex> lock(reg.mutex);
    reg.pending.push_back(this);
}

CAppInitializer::~CAppInitializer() {
    {
        InitializerRegistry& reg = registry();
        std::lock_guard<std::mutex> lock(reg.mutex);
        reg.pending.erase(std::remove(reg.pending.begin(), reg.pending.end(), this), reg.pending.end());
    }
    if (CaApp::s_instance)
        CaApp::s_instance->forgetInitializer(this);
}

CaApp::CaApp() {
    s_instance = this;
    wxString fromEnv;
    if (wxGetEnv("VL_MODULE_DIR", &fromEnv) && !fromEnv.empty()) {
        m_moduleDir = fromEnv;
    } else {
        wxFileName exe(wxStandardPaths::Get().GetExecutablePath());
        m_moduleDir = exe.GetPath() + wxFILE_SEP_PATH + "modules";
    }
}

CaApp::~CaApp() {
    uninitAll();
    if (s_instance == this)
        s_instance = nullptr;
}

CaApp* CaApp::instance() { return s_instance; }

void CaApp::setModuleDir(const wxString& dir) { m_moduleDir = dir; }
wxString CaApp::moduleDir() const { return m_moduleDir; }

bool CaApp::isDrxLoaded(const wxString& name) const {
    return std::any_of(m_modules.begin(), m_modules.end(),
                       [&](const std::unique_ptr<LoadedModule>& m) { return m->name == name; });
}

bool CaApp::loadDrx(const wxString& name, bool reportErrors) {
    if (name.empty() || name.find_first_of("/\\") != wxString::npos) {
        if (reportErrors)
            prompt(wxString::Format(_("Invalid module name \"%s\"."), name));
        return false;
    }
    if (isDrxLoaded(name))
        return true;

    const wxString path = m_moduleDir + wxFILE_SEP_PATH + name + ".so";
    if (!wxFileName::FileExists(path)) {
        if (reportErrors)
            prompt(wxString::Format(_("Module \"%s\" not found (looked for %s)."), name, path));
        return false;
    }
    // Mapped privately first: a module of another interface version must not lend its symbols
    // to modules loaded later. Its static objects have run by now; the initialisers they
    // registered are dropped with it.
    const size_t pendingBefore = pendingInitializerCount();
    void* handle = dlopen(path.utf8_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) {
        if (reportErrors) {
            const char* why = dlerror();
            prompt(wxString::Format(_("Module \"%s\" could not be loaded: %s"), name,
                                    wxString::FromUTF8(why ? why : "unknown error")));
        }
        return false;
    }
    const int* version = moduleInterfaceVersion(handle, path);
    if (!version || *version != kModuleInterfaceVersion) {
        if (reportErrors) {
            if (version)
                prompt(wxString::Format(_("Module \"%s\" was built for version %d of the host interface, but this "
                                          "host has version %d; the module is not loaded."),
                                        name, *version, kModuleInterfaceVersion));
            else
                prompt(wxString::Format(_("Module \"%s\" does not state the version of the host interface it was "
                                          "built for; the module is not loaded."),
                                        name));
        }
        dropInitializersFrom(pendingBefore);
        dlclose(handle);
        return false;
    }
    // Now its symbols serve the modules loaded after it, as the libraries' own do.
    if (void* global = dlopen(path.utf8_str(), RTLD_NOW | RTLD_NOLOAD | RTLD_GLOBAL)) {
        dlclose(handle);
        handle = global;
    }
    auto module = std::make_unique<LoadedModule>();
    module->name = name;
    module->path = path;
    module->handle = handle;
    m_modules.push_back(std::move(module));
    // Start-up functions may load further modules; each runs the initialisers it mapped.
    runInitializers(name);
    return true;
}

void CaApp::runPendingInitializers() { runInitializers(wxString()); }

void CaApp::runInitializers(const wxString& module) {
    for (;;) {
        CAppInitializer* next = nullptr;
        {
            InitializerRegistry& reg = registry();
            std::lock_guard<std::mutex> lock(reg.mutex);
            if (reg.pending.empty())
                return;
            next = reg.pending.front();
            reg.pending.erase(reg.pending.begin());
        }
        if (next->m_init) {
            try {
                next->m_init(this);
            } catch (const std::exception& e) {
                promptf(L"Start-up of module \"%ls\" failed: %ls", module.wc_str(),
                        wxString::FromUTF8(e.what()).wc_str());
            }
        }
        // Recorded once it has run, so that modules it loaded itself shut down after it; a
        // failed start-up still gets its shut-down to release what it did set up.
        m_initialized.push_back({next, module});
    }
}

void CaApp::uninitAll() {
    while (!m_initialized.empty()) {
        InitializedEntry entry = m_initialized.back();
        m_initialized.pop_back();
        if (entry.initializer->m_uninit) {
            try {
                entry.initializer->m_uninit(this);
            } catch (const std::exception& e) {
                promptf(L"Shut-down of module \"%ls\" failed: %ls", entry.module.wc_str(),
                        wxString::FromUTF8(e.what()).wc_str());
            }
        }
    }
    // Modules stay mapped: wxWidgets may still hold their class records and event tables.
}

void CaApp::forgetInitializer(CAppInitializer* initializer) {
    m_initialized.erase(std::remove_if(m_initialized.begin(), m_initialized.end(),
                                       [&](const InitializedEntry& e) { return e.initializer == initializer; }),
                        m_initialized.end());
}

void CaApp::addAppReactor(CAppReactor* reactor, unsigned scope) {
    if (!reactor)
        return;
    for (ReactorEntry& entry : m_reactors) {
        if (entry.reactor == reactor) {
            entry.scope |= scope;
            return;
        }
    }
    m_reactors.push_back({reactor, scope});
}

void CaApp::removeAppReactor(CAppReactor* reactor) {
    m_reactors.erase(std::remove_if(m_reactors.begin(), m_reactors.end(),
                                    [&](const ReactorEntry& e) { return e.reactor == reactor; }),
                     m_reactors.end());
}

bool CaApp::hasAppReactor(const CAppReactor* reactor) const {
    return std::any_of(m_reactors.begin(), m_reactors.end(),
                       [&](const ReactorEntry& e) { return e.reactor == reactor; });
}

// A copy, so that a reactor may add or remove reactors while it is called.
std::vector<CAppReactor*> CaApp::reactorsFor(unsigned scope) const {
    std::vector<CAppReactor*> result;
    for (const ReactorEntry& entry : m_reactors)
        if (entry.scope & scope)
            result.push_back(entry.reactor);
    return result;
}

void CaApp::setActiveDatabase(OdDbDatabase* db) {
    if (db == m_activeDb)
        return;
    OdDbDatabase* previous = m_activeDb;
    if (previous)
        for (CAppReactor* reactor : reactorsFor(kDocumentEvents))
            if (hasAppReactor(reactor))
                reactor->onDeactivate(previous);
    m_activeDb = db;
    if (db)
        for (CAppReactor* reactor : reactorsFor(kDocumentEvents))
            if (hasAppReactor(reactor))
                reactor->onActivate(db);
}

TransmittalFiles CaApp::collectTransmittalFiles(const OdDbDatabase* db) {
    TransmittalFiles files;
    for (CAppReactor* reactor : reactorsFor(kApplicationEvents))
        if (hasAppReactor(reactor))
            reactor->onDatabaseAddedToEtransmit(db, files);
    return files;
}

void CaApp::fireBeginQuit() {
    for (CAppReactor* reactor : reactorsFor(kApplicationEvents))
        if (hasAppReactor(reactor))
            reactor->onBeginQuit();
}

void CaApp::setLibraryInfoProvider(std::function<wxString(OdDbDatabase*)> provider) {
    m_libraryInfo = std::move(provider);
}

void CaApp::setService(const std::string& name, void* service) {
    if (service)
        m_services[name] = service;
    else
        m_services.erase(name);
}

void* CaApp::service(const std::string& name) const {
    const auto found = m_services.find(name);
    return found == m_services.end() ? nullptr : found->second;
}

wxString CaApp::libraryInfo(OdDbDatabase* db) const {
    if (!m_libraryInfo)
        return _("(no library module)");
    return m_libraryInfo(db);
}

void CaApp::addCommand(const wxString& name, const wxString& menuLabel, std::function<void()> action) {
    if (name.empty() || name.find_first_of(" \t\r\n") != wxString::npos || !action)
        throw std::invalid_argument("A command needs a name without blanks and an action");
    for (Command& command : m_commands) {
        if (command.name.IsSameAs(name, false)) {
            command.menuLabel = menuLabel;
            command.action = std::move(action);
            commandsChanged();
            return;
        }
    }
    m_commands.push_back({name, menuLabel, std::move(action)});
    commandsChanged();
}

bool CaApp::removeCommand(const wxString& name) {
    auto it = std::find_if(m_commands.begin(), m_commands.end(),
                           [&](const Command& c) { return c.name.IsSameAs(name, false); });
    if (it == m_commands.end())
        return false;
    m_commands.erase(it);
    commandsChanged();
    return true;
}

const Command* CaApp::findCommand(const wxString& name) const {
    for (const Command& command : m_commands)
        if (command.name.IsSameAs(name, false))
            return &command;
    return nullptr;
}

bool CaApp::runCommand(const wxString& line) {
    const wxString name = line.BeforeFirst(' ');
    const Command* command = findCommand(name);
    if (!command) {
        promptf(L"Unknown command \"%ls\".", name.wc_str());
        return false;
    }
    // A copy: the command may remove itself or change the list while it runs.
    std::function<void()> action = command->action;
    // Commands may run commands; each sees its own argument.
    const wxString outerArgument = m_commandArgument;
    m_commandArgument = line.AfterFirst(' ').Strip(wxString::both);
    try {
        action();
    } catch (const std::exception& e) {
        promptf(L"Command \"%ls\" failed: %ls", name.wc_str(), wxString::FromUTF8(e.what()).wc_str());
    }
    m_commandArgument = outerArgument;
    return true;
}

void CaApp::executeCommandLine(const wxString& text) {
    wxArrayString names;
    wxStringTokenizer words(text, " \t\r\n", wxTOKEN_STRTOK);
    while (words.HasMoreTokens()) {
        wxString word = words.GetNextToken();
        while (!word.empty() && (word[0] == '_' || word[0] == '.'))
            word.erase(0, 1);
        if (!word.empty())
            names.push_back(word);
    }
    auto run = [this, names]() {
        for (const wxString& name : names)
            runCommand(name);
    };
    if (wxTheApp && wxTheApp->IsMainLoopRunning())
        wxTheApp->CallAfter(run);
    else
        run();
}

void CaApp::setCommandsChangedHandler(std::function<void()> handler) { m_commandsChanged = std::move(handler); }

void CaApp::commandsChanged() {
    if (m_commandsChanged)
        m_commandsChanged();
}

OdDbDatabase* curDb() {
    CaApp* app = CaApp::instance();
    return app ? app->activeDatabase() : nullptr;
}

wxString appName() { return applicationName(); }
void setAppName(const wxString& name) { applicationName() = name; }

}  // namespace ca
