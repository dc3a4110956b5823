#include "messenger/core/process_protection.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <csignal>

namespace oku {

void protectProcess() {
    umask(S_IRWXG | S_IRWXO);
    const rlimit none{0, 0};
    setrlimit(RLIMIT_CORE, &none);  // lowering a limit is always allowed
    std::signal(SIGXFSZ, SIG_IGN);  // a file that may not grow is seen by the write, as a full disk is
}

}  // namespace oku
