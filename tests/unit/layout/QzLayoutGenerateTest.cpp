// Records generated from the dialog templates of the host's resource module for windows that no
// layout file configures, and the sections they leave in the layout file for a designer.
#include "LayoutTestSupport.h"

#include "framework/QzBaseWindow.h"
#include "framework/QzDialog.h"
#include "framework/QzGuiMgr.h"
#include "support/DialogFixtures.h"
#include "support/GeometryPrint.h"

#include <algorithm>
#include <string>

namespace QzLayoutTest
{

namespace
{

const char* const kLayoutPath = "ini/Layout.ini";

// A control as the host's classes are: created from its record.
class TemplateCtrl : public QzGui::CQzBaseWindow
{
public:
    int GetWndType() override { return QzGui::QZ_WND_BUTTON; }
    BOOL OnCreate() override { return 1; }
};

} // namespace

// The GUI manager's resource module is the fixture module, its default dialog 101; the layout
// file has a section for the edit 1001 of dialog 101 that lacks "h".
class LayoutGenerateTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        QZ_REQUIRE_DIALOG_FIXTURE(m_strModule);
        m_data.Write(kLayoutPath, "[101-1001]\nx=1\ny=2\nw=3\n");
        Start(LoadLibraryExA(m_strModule.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE));
    }
    void TearDown() override
    {
        if (m_pMgr)
            m_pMgr->Release();
    }
    void Start(HINSTANCE hInstance)
    {
        m_pMgr = QzGui::CreateGuiMgr();
        ASSERT_TRUE(m_pMgr->Init(hInstance, m_harness.MainWindow(), 101, "Layout.ini"));
    }
    CQzGuiInfoMgr* Info() { return static_cast<QzGui::CQzGuiMgr*>(m_pMgr)->GetInfoMgr(); }
    static std::string Key(const char* pszSection, const char* pszKey)
    {
        char szValue[256];
        GetPrivateProfileStringA(pszSection, pszKey, "<none>", szValue, sizeof(szValue),
                                 kLayoutPath);
        return szValue;
    }
    // The layout file's text, whatever line ending the profile functions chose.
    std::string LayoutText() const
    {
        std::string text = m_data.Read(kLayoutPath);
        text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
        return text;
    }
    QzTest::LogCapture& Log() { return m_harness.Log(); }

    const std::string m_strModule = QzTest::DialogFixturePath("dialogs64.dll");
    QzTest::Harness m_harness{800, 600};
    QzTest::TempDataDir m_data;
    QzGui::IQzGuiMgr* m_pMgr = nullptr;
};

TEST_F(LayoutGenerateTest, SectionWithoutHeightIsRejectedThenGeneratedFromTheTemplate)
{
    EXPECT_EQ(1, Log().Count("data error"));
    Log().Clear();

    IQzGuiWndInfo* pInfo = Info()->GetWndInfo(101, 1001, QzGui::QZ_WND_EDIT, 0);

    // The edit's item: (50, 5) - (150, 17) dialog units, scaled by 1.8 and truncated.
    ASSERT_NE(nullptr, pInfo);
    EXPECT_EQ((Place{90, 9, 180, 21}), PlaceOf(pInfo));
    EXPECT_EQ(6, pInfo->GetBackShowMode());
    EXPECT_EQ(12, pInfo->GetFontSize());
    EXPECT_STREQ("", pInfo->GetAniSection());
    EXPECT_EQ(0u, pInfo->TestFlag(0xFFFFFFFF));
    const QzPlatform::LogRecord* pRecord = Log().Find("Control information no configuration!!!");
    ASSERT_NE(nullptr, pRecord);
    EXPECT_EQ("101", pRecord->Get("parent_id"));
    EXPECT_EQ("1001", pRecord->Get("ctrl_id"));

    // The file gets the section anew, the placeholder look replacing back mode 6.
    EXPECT_EQ("[101-1001]\nx=90\ny=9\nw=180\nh=21\ntype=3\nBackShowMode=0\n"
              "AniSection=Public_Drag1Btn\n",
              LayoutText());

    // Generated once: the record is kept and asked for again without a log.
    EXPECT_EQ(pInfo, Info()->GetWndInfo(101, 1001, QzGui::QZ_WND_EDIT, 0));
    EXPECT_EQ(1, Log().Count("Control information no configuration!!!"));
}

TEST_F(LayoutGenerateTest, StaticTextGetsItsCaptionAndFontSize)
{
    IQzGuiWndInfo* pInfo = Info()->GetWndInfo(101, 1000, QzGui::QZ_WND_STATIC, 0);

    ASSERT_NE(nullptr, pInfo);
    EXPECT_EQ((Place{9, 9, 72, 18}), PlaceOf(pInfo));
    EXPECT_STREQ("\xC3\xFB\xD7\xD6:", pInfo->GetTitle()); // "名字:" in the ANSI code page
    EXPECT_EQ(QzGui::WNDINFO_FLAG_FONTSIZE, pInfo->TestFlag(0xFFFFFFFF));
    EXPECT_EQ("5", Key("101-1000", "type"));
    EXPECT_EQ("6", Key("101-1000", "BackShowMode"));
    EXPECT_EQ("\xC3\xFB\xD7\xD6:", Key("101-1000", "Title"));
    EXPECT_EQ("12", Key("101-1000", "FontSize"));
    EXPECT_EQ("<none>", Key("101-1000", "AniSection"));
}

TEST_F(LayoutGenerateTest, DialogAndControlsOfTheDefaultDialogTakeTheirTemplates)
{
    // Parent 0 means the default dialog: IDOK of 101 at (40, 100) - (90, 114).
    IQzGuiWndInfo* pOk = Info()->GetWndInfo(0, 1, QzGui::QZ_WND_BUTTON, 0);
    ASSERT_NE(nullptr, pOk);
    EXPECT_EQ((Place{72, 180, 90, 25}), PlaceOf(pOk));
    EXPECT_EQ("\xC8\xB7\xB6\xA8", Key("0-1", "Title"));

    // A dialog: its template's size at (200, 200); the file says Style 1, the record 0.
    IQzGuiWndInfo* pDialog = Info()->GetWndInfo(0, 201, QzGui::QZ_WND_DIALOG, 0);
    ASSERT_NE(nullptr, pDialog);
    EXPECT_EQ((Place{200, 200, 432, 288}), PlaceOf(pDialog));
    EXPECT_EQ(0, pDialog->GetStyle());
    EXPECT_EQ(6, pDialog->GetBackShowMode());
    const std::string file = LayoutText();
    EXPECT_NE(std::string::npos,
              file.find("[0-201]\nx=200\ny=200\nw=432\nh=288\nStyle=1\nBackShowMode=6\n"))
        << file;
}

TEST_F(LayoutGenerateTest, UnconfiguredDialogIsLaidOutFromItsTemplate)
{
    QzGui::CQzDialog dialog(101, nullptr);
    TemplateCtrl ok;
    dialog.AddCtrl(1, &ok); // IDOK of the template
    m_pMgr->AddDialog(&dialog, nullptr, true);

    EXPECT_EQ((RECT{200, 200, 200 + 360, 200 + 216}), dialog.GetWindowRect());
    EXPECT_EQ((RECT{200 + 72, 200 + 180, 200 + 72 + 90, 200 + 180 + 25}), ok.GetWindowRect());
    EXPECT_EQ(2, Log().Count("Control information no configuration!!!"));
    EXPECT_EQ(0, Log().Count("Dialog or Control error!!!"));
    m_pMgr->RemoveDialog(&dialog);
}

TEST_F(LayoutGenerateTest, GeneratedSectionIsReadBackOnReload)
{
    Info()->GetWndInfo(101, 1001, QzGui::QZ_WND_EDIT, 0);
    Log().Clear();

    Info()->ReloadCurrentLayout();

    IQzGuiWndInfo* pInfo = Info()->GetWndInfo(101, 1001, QzGui::QZ_WND_EDIT, 0);
    ASSERT_NE(nullptr, pInfo);
    EXPECT_EQ(21u, pInfo->GetHeight());
    EXPECT_EQ(0, pInfo->GetBackShowMode());
    EXPECT_STREQ("Public_Drag1Btn", pInfo->GetAniSection());
    EXPECT_EQ(0, Log().Count("data error"));
    EXPECT_EQ(0, Log().Count("Control information no configuration!!!"));
}

TEST_F(LayoutGenerateTest, WindowNoTemplateDescribesGetsNothing)
{
    EXPECT_EQ(nullptr, Info()->GetWndInfo(999, 5, QzGui::QZ_WND_BUTTON, 0));
    EXPECT_EQ(nullptr, Info()->GetWndInfo(101, 4242, QzGui::QZ_WND_BUTTON, 0));
    EXPECT_EQ(nullptr, Info()->GetWndInfo(0, 777, QzGui::QZ_WND_DIALOG, 0));
    EXPECT_EQ(0, Log().Count("Control information no configuration!!!"));
    EXPECT_EQ("<none>", Key("101-4242", "x"));

    // A resource module that is no PE file at all: nothing, and not a word in the log.
    m_pMgr->Release();
    m_pMgr = nullptr;
    Start(GetModuleHandleA(nullptr));
    Log().Clear();
    EXPECT_EQ(nullptr, Info()->GetWndInfo(101, 1000, QzGui::QZ_WND_STATIC, 0));
    EXPECT_TRUE(Log().Empty());
}

} // namespace QzLayoutTest
