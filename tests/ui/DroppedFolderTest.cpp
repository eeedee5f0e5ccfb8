#include "ui/DroppedFolder.h"

#include <gtest/gtest.h>

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <filesystem>

#include "tests/fakes/TemporaryFolder.h"
#include "tests/ui/ExplorerPageFixture.h"

namespace kestrune {

namespace {

QByteArray uriOf(const std::string& path) {
    return "file://" + QByteArray::fromStdString(path).toPercentEncoding("/");
}

std::optional<std::string> droppedFrom(const QByteArray& lines) {
    QMimeData data;
    data.setData(QStringLiteral("text/uri-list"), lines);
    return droppedFolder(data);
}

class DroppedFolderTest : public ExplorerPageFixture {
protected:
    std::string makeFolder(const std::string& name) {
        const std::string path = m_temporary.path(name);
        std::filesystem::create_directory(path);
        return path;
    }

    std::string makeFile(const std::string& name) { return m_temporary.write(name, "content"); }

    /// Drags what lines name onto the page; whether it would be taken.
    bool drag(const QByteArray& lines, Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction) {
        m_dragged.setData(QStringLiteral("text/uri-list"), lines);
        m_actions = actions;
        QDragEnterEvent event(QPoint(50, 300), actions, &m_dragged, Qt::LeftButton, Qt::NoModifier);
        event.ignore();
        QApplication::sendEvent(&page(), &event);
        QApplication::processEvents();
        EXPECT_TRUE(!event.isAccepted() || event.dropAction() != Qt::MoveAction);
        return event.isAccepted();
    }

    void drop() {
        QDropEvent event(QPointF(50, 300), m_actions, &m_dragged, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&page(), &event);
        QApplication::processEvents();
    }

    const QString highlight = QStringLiteral("Drop the folder here to explore it.");

private:
    TemporaryFolder m_temporary;
    QMimeData m_dragged;
    Qt::DropActions m_actions;
};

}  // namespace

TEST_F(DroppedFolderTest, oneFolderIsTakenByItsBytes) {
    for (const char* name : {"plain", "two words & 100%", "bytes \xff\xfe \xc3", "line\nbreak", "a#b?c"}) {
        const std::string path = makeFolder(name);
        EXPECT_EQ(droppedFrom(uriOf(path) + "\r\n"), path) << name;
    }
}

TEST_F(DroppedFolderTest, theMachinesOwnNameIsUnderstoodAndAnotherOneIsNot) {
    const std::string path = makeFolder("plain");
    const QByteArray rest = QByteArray::fromStdString(path);
    EXPECT_EQ(droppedFrom("file://localhost" + rest), path);
    EXPECT_EQ(droppedFrom("FILE:" + rest), path);
    EXPECT_EQ(droppedFrom("file://elsewhere.example" + rest), std::nullopt);
    EXPECT_EQ(droppedFrom("https://localhost" + rest), std::nullopt);
}

TEST_F(DroppedFolderTest, filesSeveralThingsAndWhatIsGoneAreNotTaken) {
    const QByteArray folder = uriOf(makeFolder("one"));
    EXPECT_EQ(droppedFrom(uriOf(makeFile("file"))), std::nullopt);
    EXPECT_EQ(droppedFrom(folder + "\r\n" + uriOf(makeFolder("two"))), std::nullopt);
    EXPECT_EQ(droppedFrom(folder + "-gone"), std::nullopt);
    EXPECT_EQ(droppedFrom("file:relative"), std::nullopt);
    EXPECT_EQ(droppedFrom(folder + "%00"), std::nullopt);
    EXPECT_EQ(droppedFrom(""), std::nullopt);
    EXPECT_EQ(droppedFrom("# a comment\r\n" + folder + "\r\n").has_value(), true);
}

TEST_F(DroppedFolderTest, aFolderDraggedOntoThePageIsExplored) {
    const std::string path = makeFolder("bytes \xff");
    lay(path, {{"inside", gigabyte, true}});
    open(WorkspacePage::explorer);
    EXPECT_TRUE(drag(uriOf(path)));
    EXPECT_TRUE(shows(highlight));
    drop();
    EXPECT_FALSE(shows(highlight));
    finish();
    EXPECT_EQ(shownFolder(), path);
    EXPECT_NE(rowOf(path + "/inside"), nullptr);
}

TEST_F(DroppedFolderTest, whatIsDraggedAwayAgainLeavesThePageAsItWas) {
    open(WorkspacePage::explorer);
    EXPECT_TRUE(drag(uriOf(makeFolder("one"))));
    QDragLeaveEvent leave;
    QApplication::sendEvent(&page(), &leave);
    EXPECT_FALSE(shows(highlight));
    EXPECT_FALSE(fixture.store().isExploring.get());
}

TEST_F(DroppedFolderTest, filesMovesAndDropsDuringAScanAreRefused) {
    open(WorkspacePage::explorer);
    const QByteArray folder = uriOf(makeFolder("one"));
    EXPECT_FALSE(drag(uriOf(makeFile("file"))));
    EXPECT_FALSE(drag(folder, Qt::MoveAction));
    EXPECT_FALSE(shows(highlight));
    fixture.store().explore(projects);
    EXPECT_FALSE(drag(folder));
}

}  // namespace kestrune
