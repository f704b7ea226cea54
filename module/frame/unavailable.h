// Commands and functions that have a name already and no work behind it: each says so in one line.
#pragma once

void TellNoPalette();