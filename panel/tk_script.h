// tk_script.h -- the fixed frame of the Tk script that the simulator window
// is built from (IOPanel::to_tk, declared in io_panel.h). The nodes of the
// panel write their own widgets into it (panel_tk.cpp).
#ifndef PANEL_TK_SCRIPT_H
#define PANEL_TK_SCRIPT_H

// The tool version shown in the window title. The application layer holds
// its own copy for the command line; the two must agree.
constexpr const char TK_SCRIPT_VERSION[] = "1.75";

// The line width of a stream that the script is written through: wide
// enough that no generated command is ever broken by the stream.
constexpr int TK_SCRIPT_WIDTH = 1024;

#endif
