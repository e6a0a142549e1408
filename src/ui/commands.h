#pragma once

namespace celldesk {

/// Command numbers shared by menus, accelerators and command bars.
namespace command {
inline constexpr int kOk = 1;  ///< Enter in a list: open what has the focus
inline constexpr int kHelp = 9;
inline constexpr int kNew = 2002;
inline constexpr int kDelete = 2003;
inline constexpr int kOpen = 2006;
inline constexpr int kExit = 2008;
inline constexpr int kConnect = 2009;
inline constexpr int kDisconnect = 2010;
inline constexpr int kSettings = 2011;
inline constexpr int kImport = 2012;
inline constexpr int kExport = 2013;
inline constexpr int kLoadData = 2014;
inline constexpr int kUpload = 2015;
inline constexpr int kDeleteAll = 2017;
inline constexpr int kItemAssignment = 2018;
inline constexpr int kReply = 2023;
inline constexpr int kForward = 2025;
inline constexpr int kShowNames = 2027;
inline constexpr int kAllItems = 2028;
inline constexpr int kFilter = 2029;
inline constexpr int kSend = 2030;
inline constexpr int kSave = 2034;
inline constexpr int kNext = 2036;
inline constexpr int kPrevious = 2042;
inline constexpr int kConnection = 2044;
inline constexpr int kAbout = 2047;
inline constexpr int kUploadSelected = 2048;
inline constexpr int kSendSms = 2054;
}  // namespace command

/// String resources by number, where code needs them.
namespace text {
inline constexpr int kCaption = 100;
inline constexpr int kSimMemory = 101;
inline constexpr int kPhoneMemory = 102;
inline constexpr int kFolders = 103;
inline constexpr int kOutboxColumns = 105;
inline constexpr int kInboxColumns = 106;
inline constexpr int kAddressToolTips = 107;
inline constexpr int kAddressColumns = 108;
inline constexpr int kBadCentre = 109;
inline constexpr int kCannotOpenPort = 110;
inline constexpr int kBookChanged = 111;
inline constexpr int kNotImplemented = 112;
inline constexpr int kEmptyBook = 113;
inline constexpr int kDeleteAllItems = 114;
inline constexpr int kTooManyItems = 115;
inline constexpr int kDeleteAddress = 116;
inline constexpr int kDeleteItems = 117;
inline constexpr int kBadNumber = 118;
inline constexpr int kMemoryFull = 119;
inline constexpr int kKeepAssignment = 120;
inline constexpr int kInboxToolTips = 122;
inline constexpr int kOutboxToolTips = 123;
inline constexpr int kEditItem = 125;
inline constexpr int kNewItem = 126;
inline constexpr int kConnectedExit = 127;
inline constexpr int kInitialization = 128;
inline constexpr int kStarting = 129;
inline constexpr int kProgress = 130;
inline constexpr int kExportingBook = 131;
inline constexpr int kLoadingBook = 132;
inline constexpr int kCommunicationError = 133;
inline constexpr int kImportChoices = 135;
inline constexpr int kExportChoices = 136;
inline constexpr int kUnsavedBook = 138;
inline constexpr int kChangedMessages = 139;
inline constexpr int kBookFilter = 140;
inline constexpr int kMessageFilter = 141;
inline constexpr int kLoadMessages = 144;
inline constexpr int kNoPhone = 145;
inline constexpr int kNoText = 147;
inline constexpr int kEditorToolTips = 149;
inline constexpr int kSendError = 150;
inline constexpr int kNoSpace = 151;
inline constexpr int kViewerToolTips = 161;
inline constexpr int kDeleteNew = 163;
inline constexpr int kChooserColumns = 174;
inline constexpr int kBadFile = 180;
inline constexpr int kSaveTo = 181;
inline constexpr int kNotConnected = 301;
inline constexpr int kConnectedTo = 302;
inline constexpr int kConnecting = 303;
inline constexpr int kReading = 304;
inline constexpr int kUploading = 305;
inline constexpr int kDisconnecting = 306;
inline constexpr int kItems = 307;
inline constexpr int kItemsSelected = 308;
inline constexpr int kClosingLater = 309;
inline constexpr int kAssignmentHint = 310;
inline constexpr int kNoAnswer = 311;
inline constexpr int kNoMemory = 312;
inline constexpr int kHelpMissing = 313;
inline constexpr int kNoCopy = 314;
inline constexpr int kOneItem = 315;
inline constexpr int kOneItemSelected = 316;
inline constexpr int kMayLackRows = 317;
inline constexpr int kEmptyConnect = 320;
inline constexpr int kEmptyLoad = 321;
inline constexpr int kEmptyLoaded = 322;
inline constexpr int kCounter = 340;
inline constexpr int kReadsAs = 341;
inline constexpr int kTextTooLong = 342;
inline constexpr int kUploadingCount = 343;
inline constexpr int kEmptyLoadMessages = 344;
inline constexpr int kEmptyInbox = 345;
inline constexpr int kEmptyOutbox = 346;
inline constexpr int kNoAddresses = 347;
inline constexpr int kChoiceColumns = 355;
inline constexpr int kFileMissing = 356;
inline constexpr int kFolderMissing = 357;
inline constexpr int kTooManyFiles = 358;
inline constexpr int kFileDenied = 359;
inline constexpr int kFileMemory = 360;
inline constexpr int kFileNotWritten = 361;
inline constexpr int kFileNotRead = 362;
inline constexpr int kDiskFull = 363;
inline constexpr int kBadFileName = 364;
inline constexpr int kFileTooLarge = 365;
inline constexpr int kSystemError = 366;
}  // namespace text

}  // namespace celldesk
