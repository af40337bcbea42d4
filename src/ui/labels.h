#pragma once

#include <QString>

namespace quorva::gui {

/// The windows' own labels, each in English and Italian (the core's messages carry theirs).
enum class Label {
  kMainTitle,
  kUserDataButton,
  kBaseParametersButton,
  kGenerateButton,
  kExit,
  kAdvancedHelp,
  kLevel,
  kTipTitle,
  kBaseParametersLater,
  kGo,
  kPreviewButton,
  kTransferButton,
  kExploreWarnings,
  kOpen,
  kInformationNote,
  kStatus,
  kHostGroup,
  kLibraryGroup,
  kFolderGroup,
  kNameGroup,
  kIpAddress,
  kTsoUser,
  kPassword,
  kName,
  kCompany,
  kSaveConfiguration,
  kCancelUpper,
  kAdvancedOptions,
  kBrowse,
  kChooseArchive,
  kMainOptions,
  kFtpOptions,
  kDetailDb2,
  kHelpSpaced,
  kDescrBreak,
  kEasytrieveBreak,
  kCobolBreak,
  kTips,
  kAlternativeTemplate,
  kChooseTemplate,
  kQuormemFilter,
  kEditQuormem,
  kDefault,
  kPasswordAlert,
  kSaveDescr,
  kCompression,
  kOk,
  kCancel,
  kSelectAll,
  kDeselectAll,
  kInvert,
  kDynamicList,
  kWarningTitle,
  kPreviewTitle,
  kFind,
  kOpenInEditor,
  kBreakPoint,
  kNotFound,
  kLines,
  kTypedPassword,
  kInstallTitle,
  kTutorial,
  kCount
};

/// The label in the language of target_language.
QString text(Label label);

}  // namespace quorva::gui
