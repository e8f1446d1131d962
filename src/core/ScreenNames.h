// The names of the screens, as CurrentForm, the lock and key scripts use them. Each is here
// once.
#pragma once

namespace torvane::core::ScreenNames {

inline constexpr const char* FrontEnd = "FrontEnd";
inline constexpr const char* SplashForm = "SplashForm";
inline constexpr const char* WarningForm = "WarningForm";
inline constexpr const char* ShutdownForm = "ShutdownForm";
inline constexpr const char* NumberForm = "NumberForm";
inline constexpr const char* KeyboardForm = "KeyboardForm";
inline constexpr const char* MessageForm = "MessageForm";
inline constexpr const char* ProgramForm = "ProgramForm";
inline constexpr const char* ProgListForm = "ProgListForm";
inline constexpr const char* SearchForm = "SearchForm";
inline constexpr const char* EditProgForm = "EditProgForm";
inline constexpr const char* BlockStartForm = "BlockStartForm";
inline constexpr const char* RestartForm = "RestartForm";
inline constexpr const char* LaserStatusForm = "LaserStatusForm";
inline constexpr const char* MachineForm = "MachineForm";
inline constexpr const char* LoadForm = "LoadForm";
inline constexpr const char* MoveForm = "MoveForm";
inline constexpr const char* XYJogForm = "XYJogForm";
inline constexpr const char* StatusMenuForm = "StatusMenuForm";
inline constexpr const char* XYPositionForm = "XYPositionForm";
inline constexpr const char* AuxPositionForm = "AuxPositionForm";
inline constexpr const char* ViewProgForm = "ViewProgForm";
inline constexpr const char* SetupForm = "SetupForm";
inline constexpr const char* BatchForm = "BatchForm";
inline constexpr const char* UserForm = "UserForm";
inline constexpr const char* FileHandleForm = "FileHandleForm";
inline constexpr const char* FileForm = "FileForm";
inline constexpr const char* DirectoryForm = "DirectoryForm";
inline constexpr const char* SendForm = "SendForm";
/// Screens of installations that this one does not have; a few rules know them.
inline constexpr const char* LaserSettingsForm = "LaserSettingsForm";
inline constexpr const char* MachineStatusForm = "MachineStatusForm";

}  // namespace torvane::core::ScreenNames
