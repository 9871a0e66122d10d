// An effect object for holder tests: it writes every call with its arguments into a shared log
// ("Reserved09(9,-9)"), answers AddPart, HasPart and FindPart from a table of part indexes and
// counts creations and releases. ScopedRecordingFactory installs it as the effect factory.
#pragma once

#include "platform/services/QzEffectObject.h"

#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace QzTest
{

struct EffectObjectLog
{
    std::vector<std::string> calls;
    std::map<std::string, int> mapIndexes; // part name -> index
    std::vector<D3DXMATRIX> matrices;      // every SetPartMatrix, in order
    int nCreated = 0;
    int nReleased = 0;
};

class RecordingEffectObject final : public QzPlatform::IEffectObject
{
public:
    using Vector = QzPlatform::QzEffectVector;

    explicit RecordingEffectObject(EffectObjectLog& log) : m_log(log) { ++m_log.nCreated; }

    void Release() override
    {
        ++m_log.nReleased;
        delete this;
    }
    int Update() override { return Note(7, "Update"); }
    void StartEffect(const char* s, int a, int b) override { Note(0, "StartEffect", s, a, b); }
    void Draw(int x, int y, int i) override { Note(0, "Draw", x, y, i); }
    int AddPart(const char* s, int a, int b) override { return Note(Find(s), "AddPart", s, a, b); }
    void Reserved05(int a) override { Note(0, "Reserved05", a); }
    void Play(const char* s) override { Note(0, "Play", s); }
    void Reserved07(int a) override { Note(0, "Reserved07", a); }
    void Reserved08(int a) override { Note(0, "Reserved08", a); }
    void Reserved09(int a, int b) override { Note(0, "Reserved09", a, b); }
    void Reserved10(int a, int b) override { Note(0, "Reserved10", a, b); }
    void SetPartMatrix(const D3DXMATRIX& matrix, int i) override
    {
        m_log.matrices.push_back(matrix);
        Note(0, "SetPartMatrix", i);
    }
    void Reserved12() override { Note(0, "Reserved12"); }
    void Reserved13(bool a) override { Note(0, "Reserved13", a); }
    void Reserved14(int a, int b, bool c) override { Note(0, "Reserved14", a, b, c); }
    void Reserved15(int a, int b, int c, int d) override { Note(0, "Reserved15", a, b, c, d); }
    int64_t Reserved16(int a) override { return Note(0, "Reserved16", a) + (int64_t{1} << 40); }
    int HasPart(const char* s, int a, int b) override
    {
        return Note(Find(s) != -1, "HasPart", s, a, b);
    }
    int FindPart(const char* s) override { return Note(Find(s), "FindPart", s); }
    void PlayPart(int i) override { Note(0, "PlayPart", i); }
    void Reserved20(void* p) override { Note(0, "Reserved20", p != nullptr ? "ptr" : "null"); }
    void Reserved21(Vector v, int a) override { Note(0, "Reserved21", v.x, v.y, v.z, a); }
    void Reserved22(Vector v, int a) override { Note(0, "Reserved22", v.x, v.y, v.z, a); }
    void Reserved23(int a, int b, int c) override { Note(0, "Reserved23", a, b, c); }
    int Reserved24() override { return Note(5, "Reserved24"); }
    void Reserved25(int a, int b) override { Note(0, "Reserved25", a, b); }

private:
    template <typename... Args> int Note(int result, const char* name, Args... args)
    {
        std::ostringstream call;
        call << name << '(';
        [[maybe_unused]] const char* separator = "";
        ((call << separator << Printable(args), separator = ","), ...);
        call << ')';
        m_log.calls.push_back(call.str());
        return result;
    }
    template <typename T> static T Printable(T value) { return value; }
    static const char* Printable(const char* text) { return text != nullptr ? text : "null"; }
    int Find(const char* name) const
    {
        const auto found = m_log.mapIndexes.find(Printable(name));
        return found == m_log.mapIndexes.end() ? -1 : found->second;
    }

    EffectObjectLog& m_log;
};

// CreateEffectObject gives recording objects writing into the log while this lives, or null
// when the factory is to fail.
class ScopedRecordingFactory
{
public:
    explicit ScopedRecordingFactory(EffectObjectLog& log, bool bFails = false)
    {
        s_pLog = &log;
        s_bFails = bFails;
        QzPlatform::SetEffectObjectFactory(&Create);
    }
    ~ScopedRecordingFactory() { QzPlatform::SetEffectObjectFactory(nullptr); }
    ScopedRecordingFactory(const ScopedRecordingFactory&) = delete;
    ScopedRecordingFactory& operator=(const ScopedRecordingFactory&) = delete;

private:
    static QzPlatform::IEffectObject* Create()
    {
        return s_bFails ? nullptr : new RecordingEffectObject(*s_pLog);
    }

    static inline EffectObjectLog* s_pLog = nullptr;
    static inline bool s_bFails = false;
};

} // namespace QzTest
