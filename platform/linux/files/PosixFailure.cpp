#include "platform/linux/files/PosixFailure.h"

#include <cerrno>
#include <system_error>

namespace vistrel {

host::Failure posixFailure(int code) {
    return {code, std::generic_category().message(code)};
}

host::Failure lastPosixFailure() {
    return posixFailure(errno);
}

}
