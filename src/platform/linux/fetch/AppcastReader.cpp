#include "platform/linux/fetch/AppcastReader.h"

#include <QLatin1String>
#include <QString>
#include <QXmlStreamAttributes>
#include <QXmlStreamReader>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "platform/linux/fetch/PlainNotes.h"

namespace kestrune::AppcastReader {

namespace {

// The namespace is a name, nothing is ever fetched from there.
constexpr QLatin1String sparkle("http://www.andymatuschak.org/xml-namespaces/sparkle");

constexpr int itemDepth = 3;   // rss, channel, item
constexpr int fieldDepth = 4;  // what stands in an item

struct Field {
    QLatin1String name;
    std::string FeedItem::*text;
};

constexpr std::array<Field, 5> sparkleFields{{{QLatin1String("version"), &FeedItem::version},
                                              {QLatin1String("shortVersionString"), &FeedItem::shortVersion},
                                              {QLatin1String("minimumSystemVersion"), &FeedItem::minimumSystemVersion},
                                              {QLatin1String("os"), &FeedItem::os},
                                              {QLatin1String("edSignature"), &FeedItem::signature}}};

class Appcast final {
public:
    explicit Appcast(const QByteArray& feed) : m_xml(feed) {}

    [[nodiscard]] Result<std::vector<FeedItem>, FetchReason> read() {
        while (!m_failure && !m_xml.atEnd()) {
            take(m_xml.readNext());
        }
        if (m_failure) {
            return *m_failure;
        }
        if (m_xml.hasError() || !m_isAppcast) {
            return FetchReason::notFeed;
        }
        return std::move(m_items);
    }

private:
    void take(QXmlStreamReader::TokenType token) {
        switch (token) {
            case QXmlStreamReader::DTD:
            case QXmlStreamReader::EntityReference:
                m_failure = FetchReason::feedDeclaresTypes;
                break;
            case QXmlStreamReader::StartElement:
                begin();
                break;
            case QXmlStreamReader::Characters:
                m_text += m_xml.text();
                break;
            case QXmlStreamReader::EndElement:
                end();
                break;
            default:
                break;
        }
    }

    void begin() {
        ++m_depth;
        if (m_depth > deepest) {
            m_failure = FetchReason::feedTooDeep;
        } else if (m_depth == 1) {
            m_isAppcast = is("rss");
        } else if (m_depth == 2) {
            m_isInChannel = is("channel");
        } else if (m_depth == itemDepth && m_isInChannel && is("item")) {
            m_item.emplace();
            m_isInOtherChannel = false;
            m_hasEnclosure = false;
        } else if (m_depth == fieldDepth) {
            m_text.clear();
            m_isPlain = m_xml.attributes().value(sparkle, QLatin1String("format")).startsWith(QLatin1String("plain"));
            takeEnclosure();
        }
    }

    void end() {
        if (m_depth == fieldDepth && m_item) {
            takeField();
        } else if (m_depth == itemDepth && m_item) {
            finishItem();
        }
        --m_depth;
    }

    [[nodiscard]] bool is(const char* name) const {
        return m_xml.namespaceUri().isEmpty() && m_xml.name() == QLatin1String(name);
    }

    void takeEnclosure() {
        if (!m_item || m_hasEnclosure || !is("enclosure")) {
            return;
        }
        m_hasEnclosure = true;
        const QXmlStreamAttributes attributes = m_xml.attributes();
        m_item->url = attributes.value(QLatin1String("url")).trimmed().toString().toStdString();
        m_item->length = attributes.value(QLatin1String("length")).trimmed().toString().toStdString();
        for (const Field& field : sparkleFields) {
            std::string& text = (*m_item).*field.text;
            if (text.empty()) {
                text = attributes.value(sparkle, field.name).trimmed().toString().toStdString();
            }
        }
    }

    void takeField() {
        if (is("description") && m_item->notes.empty()) {
            m_item->notes = (m_isPlain ? PlainNotes::plain(m_text) : PlainNotes::fromHtml(m_text)).toStdString();
        } else if (m_xml.namespaceUri() == sparkle) {
            const QString text = m_text.trimmed();
            m_isInOtherChannel = m_isInOtherChannel || (m_xml.name() == QLatin1String("channel") && !text.isEmpty());
            const auto* const field = std::find_if(sparkleFields.begin(), sparkleFields.end(),
                                                   [this](const Field& one) { return m_xml.name() == one.name; });
            if (field != sparkleFields.end()) {
                (*m_item).*field->text = text.toStdString();
            }
        }
    }

    void finishItem() {
        if (++m_count > itemsAtMost) {
            m_failure = FetchReason::feedTooManyItems;
        } else if (!m_isInOtherChannel) {
            m_items.push_back(std::move(*m_item));
        }
        m_item.reset();
    }

    QXmlStreamReader m_xml;
    std::vector<FeedItem> m_items;
    std::optional<FetchReason> m_failure;
    std::optional<FeedItem> m_item;  ///< the one being read
    QString m_text;                  ///< of the field being read, markup inside it left out
    std::size_t m_count = 0;
    int m_depth = 0;
    bool m_isAppcast = false;
    bool m_isInChannel = false;
    bool m_isInOtherChannel = false;
    bool m_hasEnclosure = false;
    bool m_isPlain = false;
};

}  // namespace

Result<std::vector<FeedItem>, FetchReason> read(const QByteArray& feed) {
    return feed.size() > longestFeed ? FetchReason::tooLarge : Appcast(feed).read();
}

}  // namespace kestrune::AppcastReader
