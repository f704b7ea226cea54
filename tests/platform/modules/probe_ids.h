#pragma once

#define IDS_SECTION 101
#define IDS_UMLAUT 102
#define IDS_QUOTED 103
