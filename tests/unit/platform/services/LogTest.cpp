#include "platform/services/QzAssert.h"
#include "platform/services/QzLog.h"
#include "support/LogCapture.h"
#include "support/TempDataDir.h"

#include <gtest/gtest.h>

#include <regex>

using namespace QzPlatform;

namespace
{

class LogTest : public ::testing::Test
{
protected:
    void SetUp() override { SetTimeTextForTesting("2024-01-02 03:04:05"); }
    void TearDown() override { SetTimeTextForTesting(nullptr); }
};

LogRecord RecordWithText(const std::string& text)
{
    LogRecord record;
    record.message = "m";
    LogField field;
    field.key = "k";
    field.text = text;
    record.fields.push_back(field);
    return record;
}

std::string JsonOfText(const std::string& text)
{
    return FormatLogRecordJson(RecordWithText(text));
}

} // namespace

TEST_F(LogTest, StandardFieldsComeFirstThenTheEventFieldsInOrder)
{
    QzTest::LogCapture capture;
    LogEvent("data error", "QzGuiInfoMgr", 321,
             {LogText("file_name", "ini/a.ini"), LogText("line", nullptr), LogInt("ctrl_id", -7)});

    ASSERT_EQ(capture.Records().size(), 1u);
    const LogRecord& record = capture.Records()[0];
    EXPECT_EQ(record.message, "data error");
    std::string keys;
    for (const LogField& field : record.fields)
        keys += field.key + " ";
    EXPECT_EQ(keys, "__cb__ svr_time _ file_name line ctrl_id ");
    EXPECT_EQ(record.fields[0].kind, LogFieldKind::Text);
    EXPECT_EQ(record.fields[0].text, "");
    EXPECT_EQ(record.Get("svr_time"), "2024-01-02 03:04:05");
    EXPECT_EQ(record.fields[2].kind, LogFieldKind::Location);
    EXPECT_EQ(record.Get("_"), "QzGuiInfoMgr:321");
    EXPECT_EQ(record.Get("line"), "");
    EXPECT_TRUE(record.Has("line"));
    EXPECT_EQ(record.Get("ctrl_id"), "-7");
    EXPECT_FALSE(record.Has("wnd_id"));
}

TEST_F(LogTest, JsonEscapesQuotesBackslashesAndControlCharacters)
{
    EXPECT_EQ(JsonOfText("a\"b\\c"), "{\"msg\":\"m\",\"k\":\"a\\\"b\\\\c\"}");
    EXPECT_EQ(JsonOfText("1\n2\r3\t4"), "{\"msg\":\"m\",\"k\":\"1\\n2\\r3\\t4\"}");
    EXPECT_EQ(JsonOfText(std::string("\x01\x1f\x7f", 3)),
              "{\"msg\":\"m\",\"k\":\"\\u0001\\u001f\\u007f\"}");
    EXPECT_EQ(JsonOfText(std::string("a\0b", 3)), "{\"msg\":\"m\",\"k\":\"a\\u0000b\"}");
}

TEST_F(LogTest, JsonPassesUtf8AndEscapesOtherHighBytes)
{
    // "中" in UTF-8 passes; the same character in GBK (D6 D0) is not UTF-8 and is escaped.
    EXPECT_EQ(JsonOfText("\xE4\xB8\xAD"), "{\"msg\":\"m\",\"k\":\"\xE4\xB8\xAD\"}");
    EXPECT_EQ(JsonOfText("\xD6\xD0"), "{\"msg\":\"m\",\"k\":\"\\u00d6\\u00d0\"}");
    // A GBK character whose second byte is ASCII keeps the ASCII byte as it is.
    EXPECT_EQ(JsonOfText("\x81\x40"), "{\"msg\":\"m\",\"k\":\"\\u0081@\"}");
    // Cut, overlong, surrogate and out-of-range sequences are not UTF-8.
    EXPECT_EQ(JsonOfText("\xE4\xB8"), "{\"msg\":\"m\",\"k\":\"\\u00e4\\u00b8\"}");
    EXPECT_EQ(JsonOfText("\xC0\xAF"), "{\"msg\":\"m\",\"k\":\"\\u00c0\\u00af\"}");
    EXPECT_EQ(JsonOfText("\xED\xA0\x80"), "{\"msg\":\"m\",\"k\":\"\\u00ed\\u00a0\\u0080\"}");
    EXPECT_EQ(JsonOfText("\xF4\x90\x80\x80"),
              "{\"msg\":\"m\",\"k\":\"\\u00f4\\u0090\\u0080\\u0080\"}");
    EXPECT_EQ(JsonOfText("\xF0\x9F\x98\x80"), "{\"msg\":\"m\",\"k\":\"\xF0\x9F\x98\x80\"}");
}

TEST_F(LogTest, DefaultSinkWritesOneJsonLineInFieldOrderToStderr)
{
    testing::internal::CaptureStderr();
    LogEvent("open file failed", "QzEditSingle", 12,
             {LogText("file_name", "ini/font.ini"), LogInt("n", 5)});
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "{\"msg\":\"open file failed\",\"__cb__\":\"\",\"svr_time\":\"2024-01-02 "
              "03:04:05\",\"_\":\"QzEditSingle:12\",\"file_name\":\"ini/font.ini\",\"n\":5}\n");
}

TEST_F(LogTest, FileSinkAppendsJsonLines)
{
    QzTest::TempDataDir folder;
    folder.Write("log.txt", "earlier\n");
    {
        CFileLogSink sink("log.txt");
        ASSERT_TRUE(sink.IsOpen());
        SetLogSink(&sink);
        LogEvent("a", "S", 1);
        LogEvent("b", "S", 2, {LogInt("v", 3)});
        SetLogSink(nullptr);
    }
    EXPECT_EQ(folder.Read("log.txt"),
              "earlier\n"
              "{\"msg\":\"a\",\"__cb__\":\"\",\"svr_time\":\"2024-01-02 03:04:05\",\"_\":\"S:1\"}\n"
              "{\"msg\":\"b\",\"__cb__\":\"\",\"svr_time\":\"2024-01-02 03:04:05\",\"_\":\"S:2\","
              "\"v\":3}\n");

    CFileLogSink nowhere("missing/folder/log.txt");
    EXPECT_FALSE(nowhere.IsOpen());
    nowhere.Write(RecordWithText("dropped"));
}

TEST_F(LogTest, ASinkThatDiscardsIsGivenNoRecords)
{
    struct CCounting : ILogSink
    {
        void Write(const LogRecord&) override { ++nWritten; }
        bool Discards() const override { return bDiscards; }
        int nWritten = 0;
        bool bDiscards = false;
    } sink;
    SetLogSink(&sink);
    LogEvent("kept", "S", 1);
    sink.bDiscards = true;
    LogEvent("dropped", "S", 2, {LogInt("v", 3)});
    SetLogSink(nullptr);
    EXPECT_EQ(sink.nWritten, 1);
}

TEST(LogTimeTest, CurrentTimeIsDateAndTimeUnlessFixed)
{
    EXPECT_TRUE(std::regex_match(
        CurrentTimeText(), std::regex("[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}")));
    SetTimeTextForTesting("fixed");
    EXPECT_EQ(CurrentTimeText(), "fixed");
    SetTimeTextForTesting(nullptr);
    EXPECT_NE(CurrentTimeText(), "fixed");
}

TEST(DiagnosticTest, AssertionsAndLogMsgLinesReachTheInstalledSink)
{
    QzTest::LogCapture capture;
    int value = 0;
    EXPECT_FALSE(QZ_CHECK(value == 1, "QzBaseWindow", 248));
    EXPECT_TRUE(QZ_CHECK(value == 0, "QzBaseWindow", 249));
    ReportAssert(nullptr, nullptr, 3);
    ReportLogMsg("ASSERT(m_bPreSetParam) in 12 line of QzList");

    ASSERT_EQ(capture.Asserts().size(), 2u);
    EXPECT_EQ(capture.Asserts()[0], (QzTest::AssertReport{"value == 1", "QzBaseWindow", 248}));
    EXPECT_EQ(capture.Asserts()[1], (QzTest::AssertReport{"", "", 3}));
    ASSERT_EQ(capture.LogMsgs().size(), 1u);
    EXPECT_EQ(capture.LogMsgs()[0], "ASSERT(m_bPreSetParam) in 12 line of QzList");
}

TEST(DiagnosticTest, DefaultSinkWritesToStderr)
{
    testing::internal::CaptureStderr();
    ReportAssert("NULL != m_pQzGuiMgr", "QzBaseWindow", 248);
    ReportLogMsg("first");
    ReportLogMsg("second\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ASSERT: NULL != m_pQzGuiMgr (QzBaseWindow:248)\nfirst\nsecond\n");
}
