#include "app/fileunit.h"

#include "link/innerline.h"
#include "unit/virtualunit.h"

#include <mutex>

namespace {

class FileUnit : public InnerUnit
{
public:
    FileUnit(const UnitContent &content, std::function<void()> changed)
        : unit(UnitMemory{content, {}}), tell(std::move(changed)),
          line([this](const QByteArray &bytes) { return answer(bytes); })
    {}

    QString location() const override { return line.location(); }
    UnitContent content() const override
    {
        const std::lock_guard lock(mutex);
        return unit.memory();
    }

private:
    QByteArray answer(const QByteArray &bytes)
    {
        const std::lock_guard lock(mutex);
        received += bytes.toStdString();
        std::string answers;
        for (std::string request = takeFrame(received); !request.empty(); request = takeFrame(received)) {
            answers += unit.answer(request).value_or(std::string());
            if (parseFrame(request).data.starts_with('W')) tell();
        }
        return QByteArray::fromStdString(answers);
    }

    mutable std::mutex mutex;  ///< guards the unit and what it has received
    VirtualUnit unit;
    std::string received;
    const std::function<void()> tell;
    const InnerLine line;  ///< hangs up before the rest goes
};

}  // namespace

std::unique_ptr<InnerUnit> makeFileUnit(const UnitContent &content, std::function<void()> changed)
{
    return std::make_unique<FileUnit>(content, std::move(changed));
}
