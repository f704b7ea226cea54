// The order of what the test libraries do, kept in the test program's process under one exported name.
#pragma once

#include <string>
#include <vector>

/// Defined by libvndk_test_journal, which the test program and the test libraries link.
std::vector<std::string>& journal();
