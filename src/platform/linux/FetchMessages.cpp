#include "platform/linux/FetchMessages.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLatin1String>
#include <QString>

#include <array>
#include <utility>

namespace kestrune::FetchMessages {

namespace {

struct ItemField {
    QLatin1String name;
    std::string FeedItem::*text;
};

constexpr std::array<ItemField, 8> itemFields{{{QLatin1String("version"), &FeedItem::version},
                                               {QLatin1String("shortVersion"), &FeedItem::shortVersion},
                                               {QLatin1String("os"), &FeedItem::os},
                                               {QLatin1String("minimumSystemVersion"), &FeedItem::minimumSystemVersion},
                                               {QLatin1String("notes"), &FeedItem::notes},
                                               {QLatin1String("url"), &FeedItem::url},
                                               {QLatin1String("length"), &FeedItem::length},
                                               {QLatin1String("signature"), &FeedItem::signature}}};

constexpr QLatin1String verbKey("verb");
constexpr QLatin1String urlKey("url");
constexpr QLatin1String authorityKey("authority");
constexpr QLatin1String publicKeyKey("key");
constexpr QLatin1String signatureKey("signature");
constexpr QLatin1String bytesKey("bytes");
constexpr QLatin1String folderKey("folder");
constexpr QLatin1String itemsKey("items");
constexpr QLatin1String pathKey("path");
constexpr QLatin1String failureKey("failure");
constexpr QLatin1String detailKey("detail");

constexpr QLatin1String feedVerb("feed");
constexpr QLatin1String archiveVerb("archive");

QString fromPath(const std::string& path) {
    return QString::fromLatin1(QByteArray::fromStdString(path).toPercentEncoding("/"));
}

std::string toPath(const QJsonValue& value) {
    return QByteArray::fromPercentEncoding(value.toString().toLatin1()).toStdString();
}

std::string toText(const QJsonValue& value) {
    return value.toString().toStdString();
}

std::string lineOf(const QJsonObject& object) {
    return QJsonDocument(object).toJson(QJsonDocument::Compact).toStdString() + '\n';
}

std::optional<QJsonObject> objectIn(std::string_view line) {
    const QJsonDocument document =
        QJsonDocument::fromJson(QByteArray::fromRawData(line.data(), static_cast<qsizetype>(line.size())));
    return document.isObject() ? std::optional(document.object()) : std::nullopt;
}

QJsonObject objectOf(const FetchProgress& progress) {
    return {{bytesKey, static_cast<qint64>(progress.bytes)}};
}

QJsonObject objectOf(const std::vector<FeedItem>& items) {
    QJsonArray list;
    for (const FeedItem& item : items) {
        QJsonObject object;
        for (const ItemField& field : itemFields) {
            object.insert(field.name, QString::fromStdString(item.*field.text));
        }
        list.append(object);
    }
    return {{itemsKey, list}};
}

QJsonObject objectOf(const FetchedArchive& archive) {
    return {{pathKey, fromPath(archive.path)}};
}

QJsonObject objectOf(const FetchFailure& failure) {
    const std::string_view name = nameOf(failure.reason);
    return {{failureKey, QLatin1String(name.data(), static_cast<qsizetype>(name.size()))},
            {detailKey, QString::fromStdString(failure.detail)}};
}

std::vector<FeedItem> itemsIn(const QJsonArray& list) {
    std::vector<FeedItem> items;
    for (const QJsonValue value : list) {
        const QJsonObject object = value.toObject();
        FeedItem& item = items.emplace_back();
        for (const ItemField& field : itemFields) {
            item.*field.text = toText(object.value(field.name));
        }
    }
    return items;
}

std::optional<FetchAnswer> failureIn(const QJsonObject& object) {
    const auto reason = fetchReason(toText(object.value(failureKey)));
    return reason ? std::optional<FetchAnswer>(FetchFailure{*reason, toText(object.value(detailKey))}) : std::nullopt;
}

}  // namespace

std::string encoded(const FetchRequest& request) {
    return lineOf({{verbKey, request.verb == FetchRequest::Verb::feed ? feedVerb : archiveVerb},
                   {urlKey, QString::fromStdString(request.url)},
                   {authorityKey, fromPath(request.authorityFile)},
                   {publicKeyKey, QString::fromStdString(request.publicKey)},
                   {signatureKey, QString::fromStdString(request.signature)},
                   {bytesKey, static_cast<qint64>(request.bytes)},
                   {folderKey, fromPath(request.folder)}});
}

std::string encoded(const FetchAnswer& answer) {
    return lineOf(std::visit([](const auto& content) { return objectOf(content); }, answer));
}

std::optional<FetchRequest> request(std::string_view line) {
    const auto object = objectIn(line);
    if (!object) {
        return std::nullopt;
    }
    const QString verb = object->value(verbKey).toString();
    if (verb != feedVerb && verb != archiveVerb) {
        return std::nullopt;
    }
    return FetchRequest{verb == feedVerb ? FetchRequest::Verb::feed : FetchRequest::Verb::archive,
                        toText(object->value(urlKey)),
                        toPath(object->value(authorityKey)),
                        toText(object->value(publicKeyKey)),
                        toText(object->value(signatureKey)),
                        object->value(bytesKey).toInteger(),
                        toPath(object->value(folderKey))};
}

std::optional<FetchAnswer> answer(std::string_view line) {
    const auto object = objectIn(line);
    if (!object) {
        return std::nullopt;
    }
    if (object->contains(failureKey)) {
        return failureIn(*object);
    }
    if (object->value(itemsKey).isArray()) {
        return itemsIn(object->value(itemsKey).toArray());
    }
    if (object->value(pathKey).isString()) {
        return FetchedArchive{toPath(object->value(pathKey))};
    }
    if (object->value(bytesKey).isDouble()) {
        return FetchProgress{object->value(bytesKey).toInteger()};
    }
    return std::nullopt;
}

}  // namespace kestrune::FetchMessages
