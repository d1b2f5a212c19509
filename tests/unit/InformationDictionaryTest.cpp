#include "platform/qt/FileInformationDictionary.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace tarnwik {

namespace {

class InformationDictionaryTest : public testing::Test
{
protected:
    QString path(const QString &name) const { return m_folder.filePath(name); }

    void write(const QString &name, const QByteArray &text) const
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    QVariant value() const { return m_dictionary.object(QStringLiteral("Key")); }

    QTemporaryDir m_folder;
    FileInformationDictionary m_dictionary{{path(QStringLiteral("administrator")), path(QStringLiteral("installed"))}};
};

TEST_F(InformationDictionaryTest, withoutFilesHoldsNothing)
{
    EXPECT_FALSE(value().isValid());
}

TEST_F(InformationDictionaryTest, givesStringsAsTheyStand)
{
    write(QStringLiteral("installed"), R"({"Key": "  ü $(X)\n"})");
    EXPECT_EQ(value(), QVariant(QStringLiteral("  ü $(X)\n")));
}

TEST_F(InformationDictionaryTest, givesNumbersAndBooleansAsWhatTheyAre)
{
    write(QStringLiteral("installed"), R"({"Key": 5})");
    EXPECT_NE(value().typeId(), QMetaType::QString);
    EXPECT_EQ(value().toInt(), 5);
    write(QStringLiteral("installed"), R"({"Key": true})");
    EXPECT_EQ(value().typeId(), QMetaType::Bool);
    EXPECT_TRUE(value().toBool());
}

TEST_F(InformationDictionaryTest, holdsNoOtherKindOfValue)
{
    for (const char *text : {R"({"Key": null})", R"({"Key": ["a"]})", R"({"Key": {"a": "b"}})"}) {
        write(QStringLiteral("installed"), text);
        EXPECT_FALSE(value().isValid()) << text;
    }
}

TEST_F(InformationDictionaryTest, prefersTheFileThatIsNamedFirst)
{
    write(QStringLiteral("installed"), R"({"Key": "installed", "Other": "installed"})");
    write(QStringLiteral("administrator"), R"({"Key": "administrator"})");
    EXPECT_EQ(value(), QVariant(QStringLiteral("administrator")));
    EXPECT_EQ(m_dictionary.object(QStringLiteral("Other")), QVariant(QStringLiteral("installed")));
}

TEST_F(InformationDictionaryTest, aMalformedFileHoldsNothingAndHidesNothing)
{
    write(QStringLiteral("installed"), R"({"Key": "installed"})");
    for (const QByteArray &text : {QByteArray(), QByteArray("{\"Key\": \"admini"), QByteArray("[\"Key\"]"),
                                   QByteArray("\0\xff\xfe", 3), QByteArray("{\"Key\": \"\xff\"}")}) {
        write(QStringLiteral("administrator"), text);
        EXPECT_EQ(value(), QVariant(QStringLiteral("installed"))) << text.toStdString();
    }
}

TEST_F(InformationDictionaryTest, isReadAnewAtEveryAccess)
{
    write(QStringLiteral("installed"), R"({"Key": "before"})");
    EXPECT_EQ(value(), QVariant(QStringLiteral("before")));
    write(QStringLiteral("installed"), R"({"Key": "after"})");
    EXPECT_EQ(value(), QVariant(QStringLiteral("after")));
    QFile::remove(path(QStringLiteral("installed")));
    EXPECT_FALSE(value().isValid());
}

} // namespace

} // namespace tarnwik
