// Gives up most rights of the calling process for good. Each system has its own.
#pragma once

namespace norvo {

// Afterwards the process can read the system's own libraries and data (where the system can say
// which), talk to sound servers of this machine, and use what it is given; it cannot write files,
// reach a network, start a program or look at another process. To be called once, before the first
// thread. False when a right may be left that the system could have taken: the caller must end.
bool give_up_player_rights();

}  // namespace norvo
