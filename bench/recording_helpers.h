// The host's real helper objects behind wrappers that can keep the calls they pass on and make them again.
#pragma once

#include <cstddef>

namespace RecordingHelpers {

// While it lives, whoever in this process creates a helper object by its program identifier gets a wrapper.
class Installed {
public:
    Installed();
    ~Installed();
    Installed(const Installed&) = delete;
    Installed& operator=(const Installed&) = delete;

private:
    unsigned long Cookies[2];
};

// Forgets what was kept and keeps the calls from now on, or stops keeping them.
void Record(bool On);
// How many calls are kept.
std::size_t Count();
// Makes the kept calls again, in order. Their results are dropped, failures included.
void Replay();

} // namespace RecordingHelpers
