// The immediate-mode peer's side: every frame rebuilds every window and produces its draw data.
#pragma once

#include "PeerScreen.h"

#include <vector>

namespace PeerBench
{

class ImGuiSide : public IPeerSide
{
public:
    explicit ImGuiSide(int windows);
    ~ImGuiSide() override;
    ImGuiSide(const ImGuiSide&) = delete;
    ImGuiSide& operator=(const ImGuiSide&) = delete;

    void Frame(int frame) override;
    long Vertices() const override;
    long Indices() const override;
    long Commands() const override;

private:
    struct ControlState
    {
        bool check;
        int slider;
        bool selected;
    };

    int m_nWindows;
    std::vector<ControlState> m_states;
};

} // namespace PeerBench
