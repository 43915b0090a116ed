// What GNUstep's event loop needs to notice the end of a modal session.
#pragma once

/// Posts an event without meaning to the application, so that its event loop goes round once. Main thread.
void orvane_wake_event_loop();
