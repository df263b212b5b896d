#include "device/kora.h"
#include "link/connection.h"
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

    /// What went out, of the chunks' bytes only how many digits.
    std::string requests()
    {
        std::string texts;
        for (const std::string &text : unit.takeRequests())
            texts += visible(text.substr(0, 8)) + (text.size() > 8 ? std::to_string(text.size() - 8) : "") + ' ';
        return texts;
    }

    std::vector<unsigned char> image;
    UnitPort unit{musicianContent(), std::chrono::milliseconds(0)};
};

}  // namespace

TEST_F(Firmware, GoesOutInChunksThenEndThenRestart)
{
    const std::pair<std::size_t, const char *> cases[] = {{0, "WFD|C WFD|D "},
                                                          {1000, "WFD|A1|B1024 WFD|A2|B976 WFD|C WFD|D "},
                                                          {1024, "WFD|A1|B1024 WFD|A2|B1024 WFD|C WFD|D "}};
    for (const auto &[size, expected] : cases) {
        int chunks = 0;
        EXPECT_EQ(install(size, [&](int sent, int) { EXPECT_EQ(sent, ++chunks); }), "");
        EXPECT_EQ(requests(), expected);
        EXPECT_EQ(unit.memory().firmware, image);
    }
}

TEST_F(Firmware, EndsWithTheFirstFailure)
{
    EXPECT_NE(install(1920 * 512 + 1), "");
    EXPECT_EQ(requests(), "") << "too large is not sent in part";
    unit.queueFault(Fault::errorStatus(21, "Bad chunk"), 2);
    EXPECT_EQ(install(10000), "Bad chunk");
    EXPECT_EQ(requests(), "WFD|A1|B1024 WFD|A2|B1024 WFD|A3|B1024 RET|A21 ");
    unit.queueFault(Fault::silence(), 1);
    EXPECT_EQ(install(10000), "Receiving timeout");
    EXPECT_EQ(requests(), "WFD|A1|B1024 WFD|A2|B1024 ");
}

TEST_F(Firmware, StopsBetweenTwoChunks)
{
    const auto stop = [](int, int) { QThread::currentThread()->requestInterruption(); };
    const std::unique_ptr<QThread> worker(QThread::create([&] { EXPECT_NE(install(10000, stop), ""); }));
    worker->start();
    worker->wait();
    EXPECT_EQ(requests(), "WFD|A1|B1024 ");
}
