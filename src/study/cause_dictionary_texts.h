#pragma once
// The words of the cause dictionaries and their outline: captions, headings and messages, kept to
// the letter, misspellings included.

#include "platform/texts.h"

namespace vesk::cdtext {

inline constexpr const char* FormCaption = "Build dictionary of Cause of Burden and their Hierarchy";
inline constexpr const char* AppendButton = "&Append";
inline constexpr const char* AppendHint = "Appends to the database";
inline constexpr const char* OkButton = "&OK";
inline constexpr const char* CloseButton = "C&lose";
inline constexpr const char* NoParent = "-NA-";

// Column headings, level by level.
inline constexpr const char* GroupCode = "Group Code";
inline constexpr const char* GroupDescription = "Group Description";
inline constexpr const char* SubGroupCode = " SubGroup Code";
inline constexpr const char* SubGroupDescription = "SubGroup Description";
inline constexpr const char* ClusterCode = "Cluster Code";
inline constexpr const char* ClusterDescription = "Cluster Description";
inline constexpr const char* CauseCode = "CoBCd";
inline constexpr const char* CauseDescription = "Description";
inline constexpr const char* SequelaCode = "Sequela Code";
inline constexpr const char* SequelaDescription = "Sequela Description";

// Delete on a saved cause: causes have no deletion of their own.
inline constexpr const char* SavedCauseStays =
    "A cause of burden already in the dictionary is deleted with its cluster, on the "
    "Clusters tab.\nTo leave it out of a study, clear it on the Causes of Burden tab of "
    "Study - Setup.";

// Append.
inline constexpr const char* UpdatingGroups = "Updating _DctBDMGrps:";
inline constexpr const char* UpdatingSubGroups = "Updating _DctBDMSGrps:";
inline constexpr const char* UpdatingClusters = "Updating _DctBDMClstr:";
inline constexpr const char* UpdatingCauses = "Updating _DctBDM:";
inline constexpr const char* GroupRule =
    "The groups cannot be greater than 3, The record cannot be updated at present";
inline constexpr const char* Terminated = " Operation Terminated.";
inline constexpr const char* FillDescription =
    "Fill the Description for the CobCd entered as the description cannot be empty";
inline constexpr const char* CodeSeparator = "::";
inline constexpr const char* OnlyFiveCharacters = "Only five charactered Cobcd is valid";
inline constexpr const char* ClusterMissing = "Clustercd doesnot exit";

// Sequelae.
inline constexpr const char* SequelaNull = " The Sequela cd cannot be null";
inline constexpr const char* SequelaTooLong = " The Sequela cd should be less than or equal to 7";
inline constexpr const char* DescriptionNull = " The Description cannot be null";
inline constexpr const char* SequelaUpdated = "The Sequela has been updated ";
inline constexpr const char* AlreadyMapped = "This Cobcd has allready been mapped to the above Sequelacd";
inline constexpr const char* DeleteSequela = "Are you sure you want to delete the selected Sequela";
inline constexpr const char* TitleVESK = "VESK";

// The deletion cascade.
inline constexpr const char* ClusterAsk1 = "There are ";
inline constexpr const char* ClusterAsk2 = " CobCds mapped to this Cluster Code(";
inline constexpr const char* ClusterAsk3 = "),";
inline constexpr const char* ClusterAsk4 = "these may be lost if this Cluster Code is deleted.";
inline constexpr const char* ClusterAsk5 = "Are you sure want to delete them all ?";
inline constexpr const char* ClusterAskTitle = "Vesk : warning";
inline constexpr const char* DataAsk1 = "The CobCD's you are going to delete in this process";
inline constexpr const char* DataAsk2 = "is reffered in data tables which will";
inline constexpr const char* DataAsk3 = "also be lost if you delete the cluster code";
inline constexpr const char* DataAsk4 = "Do you want to still continue?";
inline constexpr const char* DataAskTitle = "Vesk : warning message";
inline constexpr const char* SubGroupAsk1 = "There are ";
inline constexpr const char* SubGroupAsk2 = " cluster codes mapped";
inline constexpr const char* SubGroupAsk3 = "to this sub group code (";
inline constexpr const char* SubGroupAsk4 = ") these data will be lost if the sub group code is deleted.";
inline constexpr const char* SubGroupAsk5 = "Do you want to continue?";
inline constexpr const char* GroupAsk1 = "YOU ARE AT THE TOP LEVEL OF HIERARCHY OF DISEASE GROUP CODE.";
inline constexpr const char* GroupAsk2 =
    "THERE ARE MANY SUB GROUP CODES , CLUSTER CODES AND COBCD's REFERING TO THIS GROUP CODE";
inline constexpr const char* GroupAsk3 =
    "THESE WILL BE LOST IF YOU DELETE THIS GROUP CODE. DO YOU WANT TO CONTINUE?";
inline constexpr const char* GroupAskTitle = "Vesk : Warning";

// The outline.
inline constexpr const char* OutlineCaption = "Cause of Burden Outline";
inline constexpr const char* CausesRoot = " Causes of Burden Outline";
inline constexpr const char* CausesNode = "Cause of Burden";
inline constexpr const char* PopulationRoot = " Population Schema Outline";
inline constexpr const char* PopulationNode = "Population Schema";
inline constexpr const char* ExpandAll = "&Expand All";
inline constexpr const char* CollapseAll = "&Collapse All";
inline constexpr const char* PrintButton = "&Print";
inline constexpr const char* Printed = "printed Sucessfully";

} // namespace vesk::cdtext
