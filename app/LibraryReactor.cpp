#include "app/LibraryReactor.h"

#include <stdexcept>
#include <vector>

#include <wx/intl.h>

#include <CaApp.h>
#include <CaPreferences.h>
#include <DlgQuestion.h>
#include <MainWindow.h>
#include <OdMainThread.h>
#include <OdStringWx.h>
#include <Prompt.h>
#include <QcSmartPtr.h>
#include <UtFile.h>

#include <vantlib/LibraryManager.h>

#include <vl_db/DocumentLibraries.h>

#include "app/BalloonNotifications.h"
#include "app/LibraryReactorTexts.h"
#include "app/common/Helpers.h"

namespace vl_app {

namespace {

// Every kind of object whose clash answers and skip counts an operation keeps: all but the
// records that exist only inside a material or a composition (8, 9, 10, 12).
const std::vector<vantlib::ObjectType>& countedTypes() {
    static const std::vector<vantlib::ObjectType> types = [] {
        std::vector<vantlib::ObjectType> list;
        for (uint32_t type : {1u, 2u, 3u, 4u, 5u, 6u, 7u, 11u, 13u, 14u})
            list.push_back(vantlib::ObjectType(type));
        for (uint32_t type = 15; type <= vantlib::kLastPropertySetKind; ++type)
            list.push_back(vantlib::ObjectType(type));
        return list;
    }();
    return types;
}

// Kinds whose clashes are renamed without asking when nobody enabled the question for them.
bool renamedSilently(vantlib::ObjectType type) {
    return type == vantlib::kPhysicalAsset || type == vantlib::kProfileStandard || type == vantlib::kProfileName ||
           type == vantlib::kLastPropertySetKind;
}

// Upper bound of the numbers tried for a free name, so that a library that refuses every name
// cannot hang the clash.
constexpr int kLastSuffix = 100000;

// A library file error carried from the thread that found it to the main thread.
struct LibraryFileErrorData : QcRefCounted {
    LibraryFileErrorData(const OdString& path, vl_db::EDbType type) : path(path), type(type) {}
    OdString path;
    vl_db::EDbType type;
};

const wxString openProjectInfoLabel() { return _("Open BIM Project Info dialog."); }

bool isProject(const LibraryFileErrorData& error) { return error.type == vl_db::kDbProject; }

void showBalloon(const wxString& title, const wxString& messageFormat, const LibraryFileErrorData& error) {
    BalloonNotifications::instance().show(
        qta::BubbleData(title, wxString::Format(messageFormat, toWx(error.path)), openProjectInfoLabel()));
}

void showFileMissing(const LibraryFileErrorData& error) {
    if (isProject(error))
        showBalloon(_("Missing project database"),
                    _("The project database file is missing at:\n\t%s\nBIMPROJECTINFO command can be used to locate the file."),
                    error);
    else
        showBalloon(_("Missing central database"),
                    _("The central database file is missing at:\n\t%s\nBIMPROJECTINFO command can be used to locate the file."),
                    error);
}

void showLoadingError(const LibraryFileErrorData& error) {
    if (isProject(error))
        showBalloon(_("Unable to load the project database, possibly due to an incompatible version"),
                    _("The project database file version might be incompatible with this version of Korvex:\n\t%s"), error);
    else
        showBalloon(_("Unable to load the central database, possibly due to an incompatible version"),
                    _("The central database file version might be incompatible with this version of Korvex:\n\t%s"), error);
}

void showUnknownError(const LibraryFileErrorData& error) {
    if (isProject(error))
        showBalloon(_("Unable to load the project database due to an unknown error"),
                    _("The project database file is at:\n\t%s"), error);
    else
        showBalloon(_("Unable to load the central database due to an unknown error"),
                    _("The central database file is at:\n\t%s"), error);
}

template <void (*show)(const LibraryFileErrorData&)>
void runOnMainThread(void* data) {
    // Takes over the reference counted for the hand-over.
    const auto error = QcSmartPtr<LibraryFileErrorData>::attach(static_cast<LibraryFileErrorData*>(data));
    show(*error);
}

template <void (*show)(const LibraryFileErrorData&)>
void reportFileError(const OdString& path, vl_db::EDbType type) {
    if (ut::isMainThread()) {
        show(LibraryFileErrorData(path, type));
        return;
    }
    auto* error = new LibraryFileErrorData(path, type);
    error->addRef();
    odExecuteMainThreadAction(&runOnMainThread<show>, error, true);
}

}  // namespace

LibraryReactor LibraryReactor::s_instance;

LibraryReactor::DlgEnabler::DlgEnabler(const std::set<vantlib::ObjectType>& types)
    : m_saved(LibraryReactor::instance()->m_dialogTypes) {
    LibraryReactor::instance()->m_dialogTypes = types;
}

LibraryReactor::DlgEnabler::~DlgEnabler() { LibraryReactor::instance()->m_dialogTypes = m_saved; }

LibraryReactor::LibraryReactor() { vantlib::LibraryManager::instance()->setReactor(this); }

LibraryReactor::~LibraryReactor() {
    if (vantlib::LibraryManager::instance()->reactor() == this)
        vantlib::LibraryManager::instance()->setReactor(nullptr);
}

LibraryReactor* LibraryReactor::instance() { return &s_instance; }

void LibraryReactor::reset() {
    unsigned answer = ca::preferences().VantlibDefaultClashAnswer();
    if (answer > vantlib::kSaveRename)
        answer = 0;
    for (vantlib::ObjectType type : countedTypes()) {
        m_answers[type] = answer;
        m_skipped[type] = 0;
    }
}

unsigned LibraryReactor::skipped(vantlib::ObjectType type) const { return m_skipped.at(type); }

unsigned LibraryReactor::rememberedAnswer(vantlib::ObjectType type) const {
    const auto it = m_answers.find(type);
    return it == m_answers.end() ? 0 : it->second;
}

void LibraryReactor::onTransactionBegin(const std::shared_ptr<const vantlib::Library>&) {
    if (m_depth == 0)
        reset();
    ++m_depth;
}

void LibraryReactor::onTransactionEnd(const std::shared_ptr<const vantlib::Library>&, vantlib::TransactionResult) {
    if (m_depth > 0)
        --m_depth;
}

void LibraryReactor::onObjectNotUniqueFail(ObjectInfo&) { throw vantlib::ObjectNotUnique(); }

wxString LibraryReactor::suggestName(ObjectInfo& info) const {
    const OdString name = info.name();
    if (info.tryName(name))
        return toWx(name);
    const wxString stem = stripNumeral(toWx(name));
    for (int n = 2; n <= kLastSuffix; ++n) {
        const OdString candidate = stem.empty() ? OdString::formatted(L"%d", n)
                                                : OdString::formatted(L"%ls_%d", stem.wc_str(), n);
        if (info.tryName(candidate))
            return toWx(candidate);
    }
    return wxString();
}

void LibraryReactor::onObjectNotUniqueRename(ObjectInfo& info) { suggestName(info); }

bool LibraryReactor::isCurrentProjectLibrary(const std::shared_ptr<const vantlib::Library>& library) const {
    vl_db::DocumentLibraries* libs = vl_db::docLibs(ca::curDb());
    if (!libs || !library)
        return false;
    return libs->primary() == library;
}

vantlib::SaveResolution LibraryReactor::onObjectNotUnique(ObjectInfo& info) {
    const vantlib::ObjectType type = info.type();
    if (!m_dialogTypes.count(type)) {
        if (!renamedSilently(type))
            return vantlib::kSaveSkip;
        suggestName(info);
        return vantlib::kSaveRename;
    }
    const bool project = isCurrentProjectLibrary(info.library());
    unsigned answer = m_answers[type];

    // Taken before the suggestion renames the incoming object: the question names the clash.
    wxString displayName = toWx(info.displayName());
    wxString newName = suggestName(info);
    if (type >= vantlib::kFirstProfileShape) {
        // Profiles show "<kind> <name>"; the proposal keeps the kind in front of the new name.
        const wxString userDefined = _("user defined");
        if (displayName.Contains(userDefined))
            displayName.Remove(0, userDefined.length() + 1);
        newName = displayName.BeforeLast(' ') + " " + newName;
    }
    if (answer == 0)
        answer = askUser(type, project, displayName, newName);

    switch (answer) {
    case vantlib::kSaveOverwrite: return vantlib::kSaveOverwrite;
    case vantlib::kSaveRename: return vantlib::kSaveRename;
    default: ++m_skipped[type]; return vantlib::kSaveSkip;
    }
}

unsigned LibraryReactor::askUser(vantlib::ObjectType type, bool project, const wxString& displayName,
                                 const wxString& newName) {
    wxg::DlgQuestion question(wxg::mainWindow(), ca::appName());
    question.setAnswersMask(newName.empty() ? 3u : 7u);
    question.setPrompts(wxString::Format(L"%ls '%ls'.", clashAlreadyContainsText(type, project).wc_str(),
                                         displayName.wc_str()),
                        _("Choose one of the following actions:"));
    question.addAnswer(wxg::DlgQuestion::kFirstAnswer, _("Skip"), clashKeepText(type, project));
    question.addAnswer(wxg::DlgQuestion::kSecondAnswer, _("Overwrite"), clashReplaceText(type, project));
    question.addAnswer(wxg::DlgQuestion::kThirdAnswer, _("Rename"),
                       wxString::Format(L"%ls '%ls'.", clashRenameText(type).wc_str(), newName.wc_str()));
    question.setCheckBoxText(_("Don't show this message again for this operation"));

    unsigned answer = vantlib::kSaveSkip;
    switch (question.ShowModal()) {
    case wxg::DlgQuestion::kSecondAnswer: answer = vantlib::kSaveOverwrite; break;
    case wxg::DlgQuestion::kThirdAnswer: answer = vantlib::kSaveRename; break;
    default: break;
    }
    if (question.isChecked())
        for (auto& remembered : m_answers)
            remembered.second = answer;
    return answer;
}

void LibraryReactor::onCopied(const std::shared_ptr<const vantlib::Library>&, const vantlib::IdMapping&) {}

void LibraryReactor::onLoadFailed(const std::shared_ptr<const vantlib::Library>& library,
                                  const vantlib::ObjectKey& key, const OdString& name) {
    const OdString file = vantlib::getImplFilename(library);
    if (name.isEmpty())
        ca::promptf(loadFailedByIdFormat(key.type).wc_str(), unsigned(key.id), file.c_str());
    else
        ca::promptf(loadFailedByNameFormat(key.type).wc_str(), name.c_str(), file.c_str());
}

void LibraryReactor::onLibraryFileMissing(OdDbDatabase*, const OdString& path, vl_db::EDbType type) {
    reportFileError<showFileMissing>(path, type);
}

void LibraryReactor::onLibraryFileLoadingError(OdDbDatabase*, const OdString& path, vl_db::EDbType type) {
    reportFileError<showLoadingError>(path, type);
}

void LibraryReactor::onLibraryFileUnknownError(OdDbDatabase*, const OdString& path, vl_db::EDbType type) {
    reportFileError<showUnknownError>(path, type);
}

void LibraryReactor::initBalloonNotificationHandler() { BalloonNotifications::instance().attach(); }

void LibraryReactor::unInitBalloonNotificationHandler() { BalloonNotifications::instance().detach(); }

}  // namespace vl_app
