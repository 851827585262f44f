#pragma once
// Hand-over to the user-interface thread: the host marks its main thread and lets the SDK post
// work to the wx event loop (odExecuteMainThreadAction).
namespace ca {

// Call on the main thread once the wx application object exists. Actions queued before run at
// the next idle moment of the event loop.
void installMainThreadDispatcher();
// Call before the event loop ends; later hand-overs are queued again.
void uninstallMainThreadDispatcher();

}  // namespace ca
