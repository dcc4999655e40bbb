// Any bytes a manager can send: built and converted, dumped, released; never a crash or leak.
#include <cstddef>
#include <cstdint>
#include <stdexcept>

#include "api/jsoncfgplus.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    try {
        apiCfgPlusResult* r =
            parseJsonCfgPlus(reinterpret_cast<const char*>(data), static_cast<unsigned int>(size),
                             jsonCfgPlusParserCallback, 0, 0, 0);
        printJsonCfgPlus(r);
        freeJsonCfgPlus(r);
    } catch (const std::invalid_argument&) {
        // A non-numeric channel or port text: the documented escape of the decimal conversion.
    } catch (const std::out_of_range&) {
    }
    return 0;
}
