#pragma once

#include <string>
#include <vector>

namespace vantrel::linuxdesktop {

/// What the client sets in its environment for its own libraries. The programs that it starts get the environment that
/// the client got. Changes only on the main thread and before any other thread runs; reading on any thread.
class OwnEnvironment {
  public:
    static void set(const std::string& name, const std::string& value);
    static void unset(const std::string& name);

    /// The environment for another program, each entry as "NAME=value".
    static std::vector<std::string> ofOthers();
};

/// Without a session bus, libdbus would start one by itself, and then wait on the main thread until every process has
/// ended that was started meanwhile: the browser too. Where there is none, the client has none.
void keepLibdbusFromStartingABus();

}  // namespace vantrel::linuxdesktop
