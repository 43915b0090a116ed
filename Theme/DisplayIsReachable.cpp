#include "DisplayIsReachable.h"

#include <X11/Xlib.h>

#include <cstdlib>

bool DisplayIsReachable(std::string* why) {
  const char* name = getenv("DISPLAY");
  if (!name || !*name) {
    *why = "there is no display to open windows on; set DISPLAY";
    return false;
  }
  Display* display = XOpenDisplay(name);
  if (!display) {
    *why = std::string("the display \"") + name + "\" cannot be opened";
    return false;
  }
  XCloseDisplay(display);
  return true;
}
