#include "app/DatabaseReset.h"

#include "app/AppState.h"
#include "core/DatabaseFiles.h"

namespace corvane {
bool CreateNewDatabaseFiles(AppState& state, MessageBoxes& boxes)
{
    if (!boxes.Confirm(MessageTitle,
                       "Do you want to delete the current database files to then create new database files?"))
        return false;
    DeleteDataFiles(state.AppFolder);
    if (state.Session.SessionPeer) { // failures are not news to someone who leaves
        static_cast<void>(state.Session.SessionPeer->DestroyPlayer(state.Session.OwnPlayerId));
        static_cast<void>(state.Session.SessionPeer->Close());
    }
    ReleaseSessionObjects(state.Session);
    boxes.Inform("The current database files were deleted, now you must re-run or restart Corvane for then create new "
                 "database files. Now the program will end.");
    return true;
}
} // namespace corvane
