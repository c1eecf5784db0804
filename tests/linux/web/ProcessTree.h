#pragma once
#include <string>

namespace vistrel {

/// How many running processes below this one have that name (its first fifteen characters).
int descendantsNamed(const std::string& name);
/// Kills them, as the system does when memory runs out.
void killDescendantsNamed(const std::string& name);
/// Open file descriptors and threads of this process.
int openDescriptors();
int runningThreads();
/// Memory of this process that is in use.
double residentBytes();

}
