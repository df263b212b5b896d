#include "device/kora.h"
#include "simulator/unitport.h"
#include "support/outcome.h"
#include "support/wire.h"

#include <QThread>

#include <gtest/gtest.h>

namespace {

class Firmware : public testing::Test
{
protected:
    Firmware() { unit.recordRequests(); }

    std::string install(std::size_t size, const KORA::UploadProgress &progress = {})
    {
        image.resize(size);
        for (std::size_t byte = 0; byte < size; ++byte)
            image[byte] = static_cast<unsigned char>(byte * 7 + byte / 512);
        KORA kora(std::make_shared<Connection>(QString::fromStdString(unit.location()), 200));
        return failureOf([&] { kora.installFirmware(image, progress); });
    }

    std::vector<unsigned char> image;
    UnitPort unit{musicianContent(), std::chrono::milliseconds(0)};
};

}  // namespace

TEST_F(Firmware, GoesOutInChunksThenEndThenRestart)
{
    const std::pair<std::size_t, std::vector<std::size_t>> cases[] = {
        {0, {}}, {1000, {1024, 976}}, {1024, {1024, 1024}}};
    for (const auto &[size, hexDigits] : cases) {
        std::size_t chunk = 0;
        EXPECT_EQ(install(size, [&](int sent, int) { EXPECT_EQ(sent, static_cast<int>(++chunk)); }), "");
        const auto requests = unit.takeRequests();
        ASSERT_EQ(requests.size(), hexDigits.size() + 2);
        for (chunk = 0; chunk < hexDigits.size(); ++chunk) {
            const std::string start = wire("WFD|A" + std::to_string(chunk + 1) + "|B");
            EXPECT_TRUE(requests[chunk].starts_with(start));
            EXPECT_EQ(requests[chunk].size(), start.size() + hexDigits[chunk]);
        }
        EXPECT_EQ(requests[chunk], wire("WFD|C"));
        EXPECT_EQ(requests[chunk + 1], wire("WFD|D"));
        EXPECT_EQ(unit.memory().firmware, image);
    }
}

TEST_F(Firmware, EndsWithTheFirstFailure)
{
    EXPECT_NE(install(1920 * 512 + 1), "");
    EXPECT_TRUE(unit.takeRequests().empty()) << "too large is not sent in part";

    unit.queueFault(Fault::errorStatus(21, "Bad chunk"), 4);
    EXPECT_EQ(install(10000), "Bad chunk");
    const auto requests = unit.takeRequests();
    ASSERT_EQ(requests.size(), 6u);
    EXPECT_EQ(requests.back(), wire("RET|A21"));

    unit.queueFault(Fault::silence(), 2);
    EXPECT_LT(millisecondsOf([&] { EXPECT_EQ(install(10000), "Receiving timeout"); }), 500);
    EXPECT_EQ(unit.takeRequests().size(), 3u);
}

TEST_F(Firmware, StopsBetweenTwoChunks)
{
    const auto stopAtTwo = [](int sent, int) {
        if (sent == 2) QThread::currentThread()->requestInterruption();
    };
    const std::unique_ptr<QThread> worker(QThread::create([&] { EXPECT_NE(install(10000, stopAtTwo), ""); }));
    worker->start();
    worker->wait();
    EXPECT_EQ(unit.takeRequests().size(), 2u);
}
