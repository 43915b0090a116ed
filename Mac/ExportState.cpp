#include "ExportState.h"

using Activity = ExportState::Activity;

ExportState g_export;

ExportWindows::ExportWindows() {
  g_export.activity = Activity::kWindows;
}

ExportWindows::~ExportWindows() {
  if (g_export.activity == Activity::kWindows) g_export.activity = Activity::kNone;
}
