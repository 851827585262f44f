#include "MainThread.h"

#include <wx/app.h>

#include "OdMainThread.h"
#include "UtFile.h"

namespace ca {

void installMainThreadDispatcher() {
    ut::markMainThread();
    odSetMainThreadDispatcher([](std::function<void()> task) {
        // wxTheApp->CallAfter is safe from any thread: it queues an event for the main loop.
        if (wxTheApp)
            wxTheApp->CallAfter(std::move(task));
    });
    if (wxTheApp)
        wxTheApp->CallAfter([] { odRunPendingMainThreadActions(); });
}

void uninstallMainThreadDispatcher() { odSetMainThreadDispatcher({}); }

}  // namespace ca
