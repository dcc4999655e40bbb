// SPDX-License-Identifier: MIT
// Deep JSON equality with NaN equal to NaN; see json_equal.h.
#include "json_equal.h"

#include <cmath>
#include <cstring>

namespace tool {

bool sameJson(json_object* a, json_object* b) {
    if (a == b) return true;
    json_type type = json_object_get_type(a);
    if (type != json_object_get_type(b)) return false;
    switch (type) {
        case json_type_double: {
            double x = json_object_get_double(a);
            double y = json_object_get_double(b);
            if (std::isnan(x) || std::isnan(y)) return std::isnan(x) && std::isnan(y);
            return x == y && std::signbit(x) == std::signbit(y);
        }
        case json_type_array: {
            size_t count = json_object_array_length(a);
            if (count != json_object_array_length(b)) return false;
            for (size_t i = 0; i < count; ++i) {
                if (!sameJson(json_object_array_get_idx(a, i), json_object_array_get_idx(b, i)))
                    return false;
            }
            return true;
        }
        case json_type_object: {
            if (json_object_object_length(a) != json_object_object_length(b)) return false;
            json_object_object_foreach(a, key, value) {
                json_object* other = nullptr;
                if (!json_object_object_get_ex(b, key, &other) || !sameJson(value, other))
                    return false;
            }
            return true;
        }
        default:
            return json_object_equal(a, b) != 0;
    }
}

}  // namespace tool
