// The name of the service that keeps a queue fresh.
#pragma once

#include <string>
#include <string_view>

// As systemd wants the queue's name to be written in it, which takes it back by %I.
std::string refresh_unit(std::string_view queue);
