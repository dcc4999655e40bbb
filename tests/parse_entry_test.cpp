// SPDX-License-Identifier: MIT
// The exported entries: parse, free, request id and serial check; the dump of whole results
// is golden (golden_test), the records as a C caller reads them are c_caller_test.
#include <gtest/gtest.h>
#include <sys/time.h>

#include <cerrno>
#include <fstream>

#include "api/clock.h"
#include "api/jsoncfgplus.h"
#include "test_support.h"

namespace {

using testsupport::captureStdout;
using testsupport::parseText;

TEST(ParseEntry, ShapesOfTheResultRecord) {
    apiCfgPlusResult* r = parseText(R"({"device": {"a": 1}})");
    ASSERT_NE(r, nullptr);
    EXPECT_EQ(r->global.count, 1);
    EXPECT_EQ(r->radioCount, 0);
    EXPECT_EQ(r->radios, nullptr);
    EXPECT_EQ(r->vnsCount, 0);
    EXPECT_EQ(r->vnsList, nullptr);
    EXPECT_EQ(r->meshpointCount, 0);
    EXPECT_EQ(r->meshpoints, nullptr);
    freeJsonCfgPlus(r);

    r = parseText(R"({"device": {}})");
    ASSERT_NE(r, nullptr);
    EXPECT_EQ(r->global.entries, nullptr);
    freeJsonCfgPlus(r);
}

TEST(ParseEntry, FailuresGiveNull) {
    std::string out;
    EXPECT_EQ(parseText("{\"device\": ", nullptr, &out), nullptr);
    EXPECT_EQ(out.rfind("parseJsonCfgPlus starts...\n", 0), 0u);

    out = captureStdout([] {
        EXPECT_EQ(parseJsonCfgPlusFile("/nonexistent/doc.json", nullptr, 0, 0, 0), nullptr);
        EXPECT_EQ(parseJsonCfgPlusFile(nullptr, nullptr, 0, 0, 0), nullptr);
        freeJsonCfgPlus(nullptr);
        printJsonCfgPlus(nullptr);
    });
    EXPECT_EQ(out, "");
}

TEST(ParseEntry, SaveFlagWritesTheReceivedDocument) {
    std::string out = captureStdout([] {
        const std::string text = R"({"device": {"saved": true}})";
        apiCfgPlusResult* r = parseJsonCfgPlus(text.data(), text.size(), nullptr, 1, 1, 0);
        freeJsonCfgPlus(r);
    });
    size_t at = out.find("JSON-Q+ Configuration is saved to file: /tmp/json_q");
    ASSERT_NE(at, std::string::npos) << out;
    std::string path = out.substr(at + 40, out.find('\n', at) - at - 40);
    EXPECT_EQ(path.substr(path.size() - 8), "_bk.json");
    EXPECT_NE(testsupport::readFile(path).find("\"saved\": true"), std::string::npos);
}

TEST(RequestId, ReadsTheTopLevelInteger) {
    auto reqId = [](const std::string& text) {
        int id = -1;
        testsupport::captureStderr(
            [&] { id = getJsonCfgPlusReqId(text.data(), static_cast<unsigned int>(text.size())); });
        return id;
    };
    EXPECT_EQ(reqId(R"({"request-id": 77})"), 77);
    EXPECT_EQ(reqId(R"({"request-id": "77"})"), 0);
    EXPECT_EQ(reqId(R"({"device": {}})"), 0);
    EXPECT_EQ(reqId("{"), 0);
    EXPECT_EQ(reqId("[1]"), 0);
}

struct ClockCall {
    int calls = 0;
    struct timeval tv = {};
    int result = 0;
};
ClockCall g_clock;

int recordClock(const struct timeval* tv, const struct timezone* tz) {
    ++g_clock.calls;
    g_clock.tv = *tv;
    EXPECT_EQ(tz, nullptr);
    errno = 0;
    return g_clock.result;
}

class SerialCheck : public testing::Test {
  protected:
    void SetUp() override {
        g_clock = ClockCall();
        previous_ = jcp::setClockSetter(&recordClock);
    }
    void TearDown() override { jcp::setClockSetter(previous_); }

    int check(const std::string& text, const char* serial, int* requestId, std::string* out) {
        int rc = 0;
        *out = captureStdout([&] {
            testsupport::captureStderr([&] {
                rc = checkJsonCfgPlus(text.data(), static_cast<unsigned int>(text.size()), serial,
                                      requestId);
            });
        });
        return rc;
    }

  private:
    jcp::ClockSetter previous_ = nullptr;
};

TEST_F(SerialCheck, MismatchIsReportedAndTheClockStillSet) {
    std::string out;
    int requestId = 0;
    EXPECT_EQ(check(R"({"request-id": 5, "cen_time": 1700000000,
                        "device": {"cen_serial_number": "SN1"}})",
                    "SN2", &requestId, &out),
              -1);
    EXPECT_EQ(requestId, 5);
    EXPECT_EQ(out,
              "JSON request_id=5\n"
              "serial_number match: JSON sn=\"SN1\" vs AP sn=\"SN2\"\n"
              "serial_number mismatched:\"SN1\" vs \"SN2\"\n"
              "set clock(Epoch seconds):1700000000\n"
              "set clock errno=0\n");
    EXPECT_EQ(g_clock.calls, 1);
    EXPECT_EQ(g_clock.tv.tv_sec, 1700000000);
    EXPECT_EQ(g_clock.tv.tv_usec, 500000);
}

TEST_F(SerialCheck, MatchesWhenNothingCanBeCompared) {
    std::string out;
    int requestId = 42;
    EXPECT_EQ(check(R"({"device": {"cen_serial_number": "SN1"}})", nullptr, &requestId, &out), 0);
    EXPECT_EQ(out,
              "JSON request_id=0\n"
              "serial_number match: JSON sn=\"SN1\" vs AP sn=\"NULL\"\n");
    EXPECT_EQ(requestId, 42);  // no request id in the document: left alone
    EXPECT_EQ(check(R"({"cen_time": 3})", "SN", nullptr, &out), 0);
    EXPECT_EQ(check(R"({"device": {"cen_serial_number": "SN"}})", "SN", nullptr, &out), 0);
}

TEST_F(SerialCheck, FailedClockSetIsSilentAndBadTextSetsNothing) {
    std::string out;
    g_clock.result = -1;
    EXPECT_EQ(check(R"({"cen_time": 3})", nullptr, nullptr, &out), 0);
    EXPECT_EQ(out.find("set clock errno="), std::string::npos);
    EXPECT_EQ(g_clock.calls, 1);

    EXPECT_EQ(check(R"({"cen_time": 3, "device": )", "SN", nullptr, &out), 0);
    EXPECT_EQ(out, "");
    EXPECT_EQ(g_clock.calls, 1);
}

TEST(Dump, EmptyArraysHaveNoHeader) {
    apiCfgPlusResult r = {};
    apiCfgPlusEntryArray empty[2] = {};
    r.radioCount = 2;
    r.radios = empty;
    r.vnsCount = 2;
    r.vnsList = empty;
    std::string out = captureStdout([&] { printJsonCfgPlus(&r); });
    EXPECT_EQ(out.find("[Radio#"), std::string::npos);
}

}  // namespace
