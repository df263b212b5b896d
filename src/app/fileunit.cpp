#include "app/fileunit.h"

#include "simulator/unitport.h"

namespace {

class FileUnit : public InnerUnit
{
public:
    FileUnit(const UnitContent &content, std::function<void()> changed) : port(UnitMemory{content, {}})
    {
        port.onExchange([tell = std::move(changed)](const std::string &request, const std::string &) {
            if (parseFrame(request).data.starts_with('W')) tell();
        });
    }

    QString location() const override { return QString::fromStdString(port.location()); }
    UnitContent content() const override { return port.memory(); }

private:
    UnitPort port;
};

}  // namespace

std::unique_ptr<InnerUnit> makeFileUnit(const UnitContent &content, std::function<void()> changed)
{
    return std::make_unique<FileUnit>(content, std::move(changed));
}
