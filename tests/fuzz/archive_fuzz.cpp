// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/keyedarchiver.h>
#include <dravelin/platform/keyedunarchiver.h>
#include <dravelin/platform/log.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <utility>
#include <vector>

using namespace dravelin;

namespace {

class Node : public Coding, public std::enable_shared_from_this<Node>
{
public:
    void encodeWithCoder(KeyedArchiver &coder) const override
    {
        coder.encodeObject(next, QStringLiteral("next"));
        coder.encodeObject(items, QStringLiteral("items"));
        coder.encodeInteger(number, QStringLiteral("number"));
    }
    bool initWithCoder(KeyedUnarchiver &coder) override
    {
        all().push_back(weak_from_this());
        next = coder.decodeObjectForKey<Node>(QStringLiteral("next"));
        items = coder.decodeObjectForKey(QStringLiteral("items"));
        number = coder.decodeInt32ForKey(QStringLiteral("number"));
        return std::exchange(number, std::max(number, 0)) >= 0;
    }

    /// Parts all objects from each other: circles would never go, and long chains would take the stack with them.
    static void part()
    {
        std::vector<std::shared_ptr<Node>> nodes;
        for (const auto &node : all())
            nodes.push_back(node.lock());
        for (const auto &node : nodes) {
            if (node) {
                node->next.reset();
                node->items.clear();
            }
        }
        all().clear();
    }

    std::shared_ptr<Node> next;
    QVariant items;
    qint32 number = 0;

private:
    static std::vector<std::weak_ptr<Node>> &all()
    {
        static std::vector<std::weak_ptr<Node>> nodes;
        return nodes;
    }
};

class Silence : public LogSink
{
    void write(QtMsgType, const QString &) override {}
};

} // namespace

// Whatever can be read is archived again, twice in the same way.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const bool isReady = [] {
        LogSink::setCurrent(std::make_shared<Silence>());
        registerCodingClass<Node>(QStringLiteral("Node"));
        return true;
    }();
    const QVariant value = KeyedUnarchiver::unarchiveObjectWithData(
        QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size)));
    QString error;
    const QByteArray written = KeyedArchiver::archivedDataWithRootObject(value, &error);
    const QVariant copy = KeyedUnarchiver::unarchiveObjectWithData(written);
    if (!isReady || !error.isNull() || written.isNull() || KeyedArchiver::archivedDataWithRootObject(copy) != written)
        std::abort();
    Node::part();
    return 0;
}
