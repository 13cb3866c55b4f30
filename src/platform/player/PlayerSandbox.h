// Gives up most rights of the calling process for good. Each system has its own. False when a right
// may be left that the system could have taken: the caller must end.
#pragma once

namespace norvo {

// Afterwards the process can connect to services of this machine and use what it is given; it
// cannot reach a network, start a program, change a file's mode, owner, times or attributes, or
// look at another process, send it a signal or set its limits. Where the system can tell files
// apart, it can read the system's own libraries and data, and write none. To be called once, before
// the first thread.
bool give_up_player_rights();

// Afterwards no thread of the process reaches anything that it was not connected with before. To be
// called once, after the other one.
bool give_up_new_connections();

}  // namespace norvo
