#include "ImGuiSide.h"

#include <imgui.h>

#include <cstdint>
#include <cstdio>

namespace PeerBench
{

ImGuiSide::ImGuiSide(int windows) : m_nWindows(windows)
{
    ImGui::CreateContext();
    ImGuiIO& io = ImGui::GetIO();
    io.IniFilename = nullptr;
    io.LogFilename = nullptr;
    io.DisplaySize = ImVec2(kScreenWidth, kScreenHeight);
    io.DeltaTime = 1.0f / 60.0f;
    unsigned char* pixels = nullptr;
    int width = 0;
    int height = 0;
    io.Fonts->GetTexDataAsRGBA32(&pixels, &width, &height);
    io.Fonts->SetTexID(reinterpret_cast<ImTextureID>(static_cast<intptr_t>(1)));
    m_states.resize(static_cast<size_t>(windows) * kControlsPerWindow);
    for (size_t i = 0; i < m_states.size(); ++i)
        m_states[i] = {(i & 1) != 0, static_cast<int>(i % 101), (i % 7) == 0};
}

ImGuiSide::~ImGuiSide()
{
    ImGui::DestroyContext();
}

void ImGuiSide::Frame(int frame)
{
    ImGuiIO& io = ImGui::GetIO();
    io.MousePos = ImVec2(MouseX(frame), MouseY(frame));
    io.MouseDown[0] = false;
    ImGui::NewFrame();
    const ImGuiStyle& style = ImGui::GetStyle();
    const float frameHeight = ImGui::GetFontSize() + style.FramePadding.y * 2;
    const float rowHeight = frameHeight + style.ItemSpacing.y;
    const int rows = (kControlsPerWindow + kColumns - 1) / kColumns;
    const ImVec2 size(kColumns * kColumnWidth + style.WindowPadding.x * 2,
                      rows * rowHeight + frameHeight + style.WindowPadding.y * 2 + 4);
    for (int w = 0; w < m_nWindows; ++w)
    {
        ImGui::SetNextWindowPos(ImVec2(WindowX(w, size.x), WindowY(w, size.y)), ImGuiCond_Always);
        ImGui::SetNextWindowSize(size, ImGuiCond_Always);
        char title[32];
        std::snprintf(title, sizeof title, "Dialog %d", w);
        if (ImGui::Begin(title, nullptr, ImGuiWindowFlags_NoSavedSettings))
        {
            for (int i = 0; i < kControlsPerWindow; ++i)
            {
                ControlState& state = m_states[static_cast<size_t>(w) * kControlsPerWindow + i];
                if (i % kColumns != 0)
                    ImGui::SameLine(style.WindowPadding.x + (i % kColumns) * kColumnWidth);
                ImGui::PushID(i);
                switch (KindOf(i))
                {
                case kButton:
                    ImGui::Button("Button", ImVec2(kItemWidth, 0));
                    break;
                case kCheck:
                    ImGui::Checkbox("Check", &state.check);
                    break;
                case kLabel:
                    ImGui::Text("Lbl %d:%d", i, (frame + i) & 255);
                    break;
                case kSlider:
                    ImGui::SetNextItemWidth(kItemWidth);
                    ImGui::SliderInt("##s", &state.slider, 0, 100);
                    break;
                case kProgress:
                    ImGui::ProgressBar(ProgressValue(frame, i) / 100.0f, ImVec2(kItemWidth, 0));
                    break;
                default:
                    if (ImGui::Selectable("Select", state.selected, 0, ImVec2(kItemWidth, 0)))
                        state.selected = !state.selected;
                    break;
                }
                ImGui::PopID();
            }
        }
        ImGui::End();
    }
    ImGui::Render();
}

long ImGuiSide::Vertices() const
{
    return ImGui::GetDrawData()->TotalVtxCount;
}

long ImGuiSide::Indices() const
{
    return ImGui::GetDrawData()->TotalIdxCount;
}

long ImGuiSide::Commands() const
{
    const ImDrawData* data = ImGui::GetDrawData();
    long commands = 0;
    for (int list = 0; list < data->CmdListsCount; ++list)
        commands += data->CmdLists[list]->CmdBuffer.Size;
    return commands;
}

} // namespace PeerBench
