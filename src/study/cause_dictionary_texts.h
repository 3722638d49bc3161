#pragma once
// The words of the cause dictionaries and their outline: captions, headings and messages, kept to
// the letter, misspellings included.

#include <QString>

namespace vesk::cdtext {

inline const QString FormCaption = QStringLiteral("Build dictionary of Cause of Burden and their Hierarchy");
inline const QString AppendButton = QStringLiteral("&Append");
inline const QString AppendHint = QStringLiteral("Appends to the database");
inline const QString OkButton = QStringLiteral("&OK");
inline const QString CloseButton = QStringLiteral("C&lose");
inline const QString NoParent = QStringLiteral("-NA-");

// Column headings, level by level.
inline const QString GroupCode = QStringLiteral("Group Code");
inline const QString GroupDescription = QStringLiteral("Group Description");
inline const QString SubGroupCode = QStringLiteral(" SubGroup Code");
inline const QString SubGroupDescription = QStringLiteral("SubGroup Description");
inline const QString ClusterCode = QStringLiteral("Cluster Code");
inline const QString ClusterDescription = QStringLiteral("Cluster Description");
inline const QString CauseCode = QStringLiteral("CoBCd");
inline const QString CauseDescription = QStringLiteral("Description");
inline const QString SequelaCode = QStringLiteral("Sequela Code");
inline const QString SequelaDescription = QStringLiteral("Sequela Description");

// Delete on a saved cause: causes have no deletion of their own.
inline const QString SavedCauseStays =
    QStringLiteral("A cause of burden already in the dictionary is deleted with its cluster, on the "
                   "Clusters tab.\nTo leave it out of a study, clear it on the Causes of Burden tab of "
                   "Study - Setup.");

// Append.
inline const QString UpdatingGroups = QStringLiteral("Updating _DctBDMGrps:");
inline const QString UpdatingSubGroups = QStringLiteral("Updating _DctBDMSGrps:");
inline const QString UpdatingClusters = QStringLiteral("Updating _DctBDMClstr:");
inline const QString UpdatingCauses = QStringLiteral("Updating _DctBDM:");
inline const QString GroupRule =
    QStringLiteral("The groups cannot be greater than 3, The record cannot be updated at present");
inline const QString Terminated = QStringLiteral(" Operation Terminated.");
inline const QString FillDescription =
    QStringLiteral("Fill the Description for the CobCd entered as the description cannot be empty");
inline const QString CodeSeparator = QStringLiteral("::");
inline const QString OnlyFiveCharacters = QStringLiteral("Only five charactered Cobcd is valid");
inline const QString ClusterMissing = QStringLiteral("Clustercd doesnot exit");

// Sequelae.
inline const QString SequelaNull = QStringLiteral(" The Sequela cd cannot be null");
inline const QString SequelaTooLong = QStringLiteral(" The Sequela cd should be less than or equal to 7");
inline const QString DescriptionNull = QStringLiteral(" The Description cannot be null");
inline const QString SequelaUpdated = QStringLiteral("The Sequela has been updated ");
inline const QString AlreadyMapped =
    QStringLiteral("This Cobcd has allready been mapped to the above Sequelacd");
inline const QString DeleteSequela = QStringLiteral("Are you sure you want to delete the selected Sequela");
inline const QString TitleVESK = QStringLiteral("VESK");

// The deletion cascade.
inline const QString ClusterAsk1 = QStringLiteral("There are ");
inline const QString ClusterAsk2 = QStringLiteral(" CobCds mapped to this Cluster Code(");
inline const QString ClusterAsk3 = QStringLiteral("),");
inline const QString ClusterAsk4 = QStringLiteral("these may be lost if this Cluster Code is deleted.");
inline const QString ClusterAsk5 = QStringLiteral("Are you sure want to delete them all ?");
inline const QString ClusterAskTitle = QStringLiteral("Vesk : warning");
inline const QString DataAsk1 = QStringLiteral("The CobCD's you are going to delete in this process");
inline const QString DataAsk2 = QStringLiteral("is reffered in data tables which will");
inline const QString DataAsk3 = QStringLiteral("also be lost if you delete the cluster code");
inline const QString DataAsk4 = QStringLiteral("Do you want to still continue?");
inline const QString DataAskTitle = QStringLiteral("Vesk : warning message");
inline const QString SubGroupAsk1 = QStringLiteral("There are ");
inline const QString SubGroupAsk2 = QStringLiteral(" cluster codes mapped");
inline const QString SubGroupAsk3 = QStringLiteral("to this sub group code (");
inline const QString SubGroupAsk4 =
    QStringLiteral(") these data will be lost if the sub group code is deleted.");
inline const QString SubGroupAsk5 = QStringLiteral("Do you want to continue?");
inline const QString GroupAsk1 =
    QStringLiteral("YOU ARE AT THE TOP LEVEL OF HIERARCHY OF DISEASE GROUP CODE.");
inline const QString GroupAsk2 =
    QStringLiteral("THERE ARE MANY SUB GROUP CODES , CLUSTER CODES AND COBCD's REFERING TO THIS GROUP CODE");
inline const QString GroupAsk3 =
    QStringLiteral("THESE WILL BE LOST IF YOU DELETE THIS GROUP CODE. DO YOU WANT TO CONTINUE?");
inline const QString GroupAskTitle = QStringLiteral("Vesk : Warning");

// The outline.
inline const QString OutlineCaption = QStringLiteral("Cause of Burden Outline");
inline const QString CausesRoot = QStringLiteral(" Causes of Burden Outline");
inline const QString CausesNode = QStringLiteral("Cause of Burden");
inline const QString PopulationRoot = QStringLiteral(" Population Schema Outline");
inline const QString PopulationNode = QStringLiteral("Population Schema");
inline const QString ExpandAll = QStringLiteral("&Expand All");
inline const QString CollapseAll = QStringLiteral("&Collapse All");
inline const QString PrintButton = QStringLiteral("&Print");
inline const QString Printed = QStringLiteral("printed Sucessfully");

} // namespace vesk::cdtext
